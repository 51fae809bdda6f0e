#pragma once
// The platform of tests and of the simulated bench without a screen: a virtual clock that only
// Sleep and event pumping move, timer ticks fired when due, message boxes recorded.

#include <cstdint>
#include <deque>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "platforms/timer_schedule.h"
#include "shell/platform.h"
#include "sim/clock.h"

namespace ombrelay {

struct RecordedMessage {
  std::string text;
  MessageStyle style = MessageStyle::Plain;
  std::string title;
};

// One thing a flow asked of the platform, in the order asked: what a test lays beside the bus
// operations to see a flow's whole sequence, its waits and boxes included.
struct PlatformActivity {
  enum class Kind { Sleep, PumpingWaitStarted, PumpingWaitEnded, Pump, TimerChanged, Message };
  Kind kind = Kind::Sleep;
  std::int64_t milliseconds = 0;             // Sleep and PumpingWaitStarted
  const RecordedMessage* message = nullptr;  // Message
};

class VirtualPlatform : public Platform {
 public:
  explicit VirtualPlatform(sim::VirtualClock& clock) : clock_(clock) {}
  VirtualPlatform(const VirtualPlatform&) = delete;
  VirtualPlatform& operator=(const VirtualPlatform&) = delete;

  void MessageBox(const std::string& text, MessageStyle style, const std::string& title) override;
  void Sleep(std::int32_t milliseconds) override;
  float SecondsSinceMidnight() override;
  void PumpEvents() override;
  void PumpingWaitStarted(float seconds) override;
  void PumpingWaitEnded() override;
  void Progress(const std::string& doing, int done, int total) override;
  void ProgressEnded() override;
  void Randomize() override;
  float Random() override;
  void AttachTimer(Timer& timer) override;
  void DetachTimer(Timer& timer) override;
  void TimerChanged(Timer& timer) override;

  // Each Progress as "doing done/total", and "ended" for each ProgressEnded, oldest first: apart
  // from the activities, as they change nothing a flow does.
  const std::vector<std::string>& ProgressSeen() const { return progress_; }

  // Every box shown so far, oldest first.
  const std::vector<RecordedMessage>& Messages() const { return messages_; }
  void ClearMessages() { messages_.clear(); }
  // Called as each box is shown, while the caller waits for it to close.
  std::function<void(const RecordedMessage&)> onMessage;
  // Called for everything asked of the platform, before it is done.
  std::function<void(const PlatformActivity&)> onActivity;

  // Random gives these first, in order, before its generator's own.
  void QueueRandom(std::vector<float> values) {
    queuedRandom_.insert(queuedRandom_.end(), values.begin(), values.end());
  }

  // How far one pump moves the clock: the time a pass of the event loop takes.
  void SetPumpStepMs(std::int64_t milliseconds) { pumpStepMs_ = milliseconds; }
  // Pumps until the clock has moved by milliseconds: the user waiting while timers tick.
  void RunFor(std::int64_t milliseconds);

 private:
  sim::VirtualClock& clock_;
  void Tell(PlatformActivity activity) const {
    if (onActivity) onActivity(activity);
  }

  std::int64_t pumpStepMs_ = 1;
  TimerSchedule timers_{*this};
  std::vector<RecordedMessage> messages_;
  std::vector<std::string> progress_;
  std::minstd_rand random_{12345};
  std::deque<float> queuedRandom_;
};

}  // namespace ombrelay
