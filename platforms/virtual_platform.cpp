#include "platforms/virtual_platform.h"

#include <cmath>

namespace ombrelay {

void VirtualPlatform::MessageBox(const std::string& text, MessageStyle style,
                                 const std::string& title) {
  messages_.push_back({text, style, title});
  Tell({.kind = PlatformActivity::Kind::Message, .message = &messages_.back()});
  if (onMessage) onMessage(messages_.back());
}

void VirtualPlatform::Sleep(std::int32_t milliseconds) {
  Tell({.kind = PlatformActivity::Kind::Sleep, .milliseconds = milliseconds});
  clock_.Advance(milliseconds);
}

float VirtualPlatform::SecondsSinceMidnight() {
  return static_cast<float>(static_cast<double>(clock_.TimeOfDayMs()) / 1000.0);
}

void VirtualPlatform::PumpEvents() {
  Tell({.kind = PlatformActivity::Kind::Pump});
  clock_.Advance(pumpStepMs_);
  // Ticks run inside the pump, untrapped: a run-time error in one reaches the handler that
  // waited.
  timers_.RunDue(clock_.NowMs(), [](const std::function<void()>& tick) { tick(); });
}

void VirtualPlatform::Progress(const std::string& doing, int done, int total) {
  progress_.push_back(doing + " " + std::to_string(done) + "/" + std::to_string(total));
}

void VirtualPlatform::ProgressEnded() {
  progress_.push_back("ended");
}

void VirtualPlatform::PumpingWaitStarted(float seconds) {
  Tell({.kind = PlatformActivity::Kind::PumpingWaitStarted,
        .milliseconds = std::llround(static_cast<double>(seconds) * 1000.0)});
}

void VirtualPlatform::PumpingWaitEnded() {
  Tell({.kind = PlatformActivity::Kind::PumpingWaitEnded});
}

void VirtualPlatform::Randomize() {
  random_.seed(static_cast<std::minstd_rand::result_type>(clock_.TimeOfDayMs()));
}

float VirtualPlatform::Random() {
  if (!queuedRandom_.empty()) {
    const float value = queuedRandom_.front();
    queuedRandom_.pop_front();
    return value;
  }
  return std::uniform_real_distribution<float>(0.0F, 1.0F)(random_);
}

void VirtualPlatform::RunFor(std::int64_t milliseconds) {
  const std::int64_t end = clock_.NowMs() + milliseconds;
  while (clock_.NowMs() < end)
    PumpEvents();
}

void VirtualPlatform::AttachTimer(Timer& timer) {
  timers_.Attach(timer, clock_.NowMs());
}

void VirtualPlatform::DetachTimer(Timer& timer) {
  timers_.Detach(timer);
}

void VirtualPlatform::TimerChanged(Timer& timer) {
  Tell({.kind = PlatformActivity::Kind::TimerChanged});
  timers_.Changed(timer, clock_.NowMs());
}

}  // namespace ombrelay
