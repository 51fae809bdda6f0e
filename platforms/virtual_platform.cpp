#include "platforms/virtual_platform.h"

#include <algorithm>

#include "shell/controls.h"

namespace ombrelay {

VirtualPlatform::~VirtualPlatform() {
  for (auto& entry : timers_)
    entry.timer->BindPlatform(nullptr);
}

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
  FireDueTimers();
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
  if (Find(timer) == nullptr) timers_.push_back({&timer, -1});
  timer.BindPlatform(this);
  TimerChanged(timer);
}

void VirtualPlatform::DetachTimer(Timer& timer) {
  timer.BindPlatform(nullptr);
  std::erase_if(timers_, [&](const ScheduledTimer& entry) { return entry.timer == &timer; });
}

void VirtualPlatform::TimerChanged(Timer& timer) {
  ScheduledTimer* entry = Find(timer);
  if (entry == nullptr) return;
  const bool running = timer.Enabled() && timer.Interval() > 0;
  entry->dueMs = running ? clock_.NowMs() + timer.Interval() : -1;
}

void VirtualPlatform::FireDueTimers() {
  // A tick may pump again, and so start, stop or detach timers: look each one up afresh.
  for (std::size_t i = 0; i < timers_.size(); ++i) {
    ScheduledTimer& entry = timers_[i];
    if (entry.dueMs < 0 || entry.dueMs > clock_.NowMs()) continue;
    Timer& timer = *entry.timer;
    entry.dueMs = clock_.NowMs() + timer.Interval();
    if (timer.Tick) timer.Tick();
  }
}

VirtualPlatform::ScheduledTimer* VirtualPlatform::Find(Timer& timer) {
  const auto it = std::find_if(timers_.begin(), timers_.end(),
                               [&](const ScheduledTimer& entry) { return entry.timer == &timer; });
  return it == timers_.end() ? nullptr : &*it;
}

}  // namespace ombrelay
