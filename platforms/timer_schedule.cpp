#include "platforms/timer_schedule.h"

#include <algorithm>

#include "shell/controls.h"

namespace ombrelay {

TimerSchedule::~TimerSchedule() {
  for (Entry& entry : entries_)
    entry.timer->BindPlatform(nullptr);
}

void TimerSchedule::Attach(Timer& timer, std::int64_t nowMs) {
  if (Find(timer) == nullptr) entries_.push_back({&timer, -1, false});
  timer.BindPlatform(&owner_);
  Changed(timer, nowMs);
}

void TimerSchedule::Detach(Timer& timer) {
  timer.BindPlatform(nullptr);
  std::erase_if(entries_, [&](const Entry& entry) { return entry.timer == &timer; });
}

void TimerSchedule::Changed(Timer& timer, std::int64_t nowMs) {
  Entry* entry = Find(timer);
  if (entry == nullptr) return;
  const bool running = timer.Enabled() && timer.Interval() > 0;
  entry->dueMs = running ? nowMs + timer.Interval() : -1;
}

void TimerSchedule::RunDue(std::int64_t nowMs,
                           const std::function<void(const std::function<void()>&)>& run) {
  // A tick may change the list under our feet: look each entry up afresh by its index.
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    Entry& entry = entries_[i];
    if (entry.dueMs < 0 || entry.dueMs > nowMs) continue;
    Timer& timer = *entry.timer;
    entry.dueMs = nowMs + timer.Interval();
    // As on the bench's event loop, a tick never starts inside the same timer's tick: one that
    // comes due meanwhile is let go, and the timer goes on from there.
    if (entry.ticking || !timer.Tick) continue;
    entry.ticking = true;
    const TickingEnds ends(*this, timer);
    run(timer.Tick);
  }
}

TimerSchedule::TickingEnds::~TickingEnds() {
  if (Entry* entry = schedule_.Find(timer_)) entry->ticking = false;
}

std::optional<std::int64_t> TimerSchedule::NextDueMs() const {
  std::optional<std::int64_t> next;
  for (const Entry& entry : entries_) {
    if (entry.dueMs >= 0 && (!next || entry.dueMs < *next)) next = entry.dueMs;
  }
  return next;
}

TimerSchedule::Entry* TimerSchedule::Find(Timer& timer) {
  const auto it = std::find_if(entries_.begin(), entries_.end(),
                               [&](const Entry& entry) { return entry.timer == &timer; });
  return it == entries_.end() ? nullptr : &*it;
}

}  // namespace ombrelay
