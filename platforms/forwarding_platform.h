#pragma once
// A platform that passes everything on to another: the base of the decorators that watch or
// change a part of what the panels ask of their platform and leave the rest alone.

#include "shell/platform.h"

namespace ombrelay {

class ForwardingPlatform : public Platform {
 public:
  explicit ForwardingPlatform(Platform& inner) : inner_(inner) {}

  void MessageBox(const std::string& text, MessageStyle style, const std::string& title) override {
    inner_.MessageBox(text, style, title);
  }
  void Sleep(std::int32_t milliseconds) override { inner_.Sleep(milliseconds); }
  float SecondsSinceMidnight() override { return inner_.SecondsSinceMidnight(); }
  void PumpEvents() override { inner_.PumpEvents(); }
  void PumpingWaitStarted(float seconds) override { inner_.PumpingWaitStarted(seconds); }
  void PumpingWaitEnded() override { inner_.PumpingWaitEnded(); }
  void Progress(const std::string& doing, int done, int total) override {
    inner_.Progress(doing, done, total);
  }
  void ProgressEnded() override { inner_.ProgressEnded(); }
  void Randomize() override { inner_.Randomize(); }
  float Random() override { return inner_.Random(); }
  // Timers bind to the inner platform, which drives them.
  void AttachTimer(Timer& timer) override { inner_.AttachTimer(timer); }
  void DetachTimer(Timer& timer) override { inner_.DetachTimer(timer); }
  void TimerChanged(Timer& timer) override { inner_.TimerChanged(timer); }

 private:
  Platform& inner_;
};

}  // namespace ombrelay
