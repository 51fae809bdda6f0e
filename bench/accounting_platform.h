#pragma once
// A platform that passes everything on to another, adds up the waits the program asks for (the
// floor below which no run of the same path can go) and counts the boxes it shows.

#include <cstddef>

#include "shell/platform.h"

namespace ombrelay {

class AccountingPlatform : public Platform {
 public:
  explicit AccountingPlatform(Platform& inner) : inner_(inner) {}

  // Milliseconds of plain and pumping waits asked for so far.
  double WaitedMs() const { return waitedMs_; }
  std::size_t Messages() const { return messages_; }

  void MessageBox(const std::string& text, MessageStyle style, const std::string& title) override {
    ++messages_;
    inner_.MessageBox(text, style, title);
  }
  void Sleep(std::int32_t milliseconds) override {
    waitedMs_ += milliseconds;
    inner_.Sleep(milliseconds);
  }
  float SecondsSinceMidnight() override { return inner_.SecondsSinceMidnight(); }
  void PumpEvents() override { inner_.PumpEvents(); }
  void PumpingWaitStarted(float seconds) override {
    if (seconds > 0) waitedMs_ += seconds * 1000.0;
    inner_.PumpingWaitStarted(seconds);
  }
  void PumpingWaitEnded() override { inner_.PumpingWaitEnded(); }
  void Randomize() override { inner_.Randomize(); }
  float Random() override { return inner_.Random(); }
  void AttachTimer(Timer& timer) override { inner_.AttachTimer(timer); }
  void DetachTimer(Timer& timer) override { inner_.DetachTimer(timer); }
  void TimerChanged(Timer& timer) override { inner_.TimerChanged(timer); }

 private:
  Platform& inner_;
  double waitedMs_ = 0.0;
  std::size_t messages_ = 0;
};

}  // namespace ombrelay
