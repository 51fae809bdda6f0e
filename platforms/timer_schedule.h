#pragma once
// When each attached timer of a platform is next due, on whatever clock the platform keeps. The
// platform says what time it is; the schedule says which ticks are due and when the next one is.

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace ombrelay {

class Platform;
class Timer;

class TimerSchedule {
 public:
  // Timers attached here report their changes to owner.
  explicit TimerSchedule(Platform& owner) : owner_(owner) {}
  // Unbinds every timer still attached: they must not call back into a platform that is gone.
  ~TimerSchedule();
  TimerSchedule(const TimerSchedule&) = delete;
  TimerSchedule& operator=(const TimerSchedule&) = delete;

  void Attach(Timer& timer, std::int64_t nowMs);
  void Detach(Timer& timer);
  // A change of Enabled or Interval starts the count afresh from nowMs.
  void Changed(Timer& timer, std::int64_t nowMs);

  // Runs, through run, the Tick of every timer due at nowMs that is not ticking already, and
  // schedules each one Interval after nowMs. A tick may pump, and so attach, detach or change
  // timers.
  void RunDue(std::int64_t nowMs, const std::function<void(const std::function<void()>&)>& run);
  // The earliest time a tick is due; nothing while every timer is stopped.
  std::optional<std::int64_t> NextDueMs() const;

 private:
  struct Entry {
    Timer* timer;
    std::int64_t dueMs;  // -1 while stopped
    bool ticking = false;
  };
  // Marks the timer's tick ended however it ends, a run-time error included, if the timer is
  // still attached by then.
  class TickingEnds {
   public:
    TickingEnds(TimerSchedule& schedule, Timer& timer) : schedule_(schedule), timer_(timer) {}
    ~TickingEnds();
    TickingEnds(const TickingEnds&) = delete;
    TickingEnds& operator=(const TickingEnds&) = delete;

   private:
    TimerSchedule& schedule_;
    Timer& timer_;
  };
  Entry* Find(Timer& timer);

  Platform& owner_;
  std::vector<Entry> entries_;
};

}  // namespace ombrelay
