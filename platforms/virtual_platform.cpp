#include "platforms/virtual_platform.h"

namespace ombrelay {

void VirtualPlatform::MessageBox(const std::string& text, MessageStyle style,
                                 const std::string& title) {
  messages_.push_back({text, style, title});
  if (onMessage) onMessage(messages_.back());
}

void VirtualPlatform::Sleep(std::int32_t milliseconds) {
  clock_.Advance(milliseconds);
}

float VirtualPlatform::SecondsSinceMidnight() {
  return static_cast<float>(static_cast<double>(clock_.TimeOfDayMs()) / 1000.0);
}

void VirtualPlatform::PumpEvents() {
  clock_.Advance(pumpStepMs_);
  // Ticks run inside the pump, untrapped: a run-time error in one reaches the handler that
  // waited.
  timers_.RunDue(clock_.NowMs(), [](const std::function<void()>& tick) { tick(); });
}

float VirtualPlatform::Random() {
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
  timers_.Changed(timer, clock_.NowMs());
}

}  // namespace ombrelay
