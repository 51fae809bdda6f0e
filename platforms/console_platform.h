#pragma once
// The platform of the command line and of benchmarks: real time and no window. Message boxes
// are lines on standard error, Sleep sleeps, the clock is the machine's, and timers tick in real
// time whenever the panels pump events.

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <random>

#include "platforms/timer_schedule.h"
#include "shell/platform.h"

namespace ombrelay {

class ConsolePlatform : public Platform {
 public:
  // log receives the message lines; seed starts the pseudo-random generator.
  explicit ConsolePlatform(std::ostream& log, std::uint32_t seed = std::random_device{}());
  ConsolePlatform(const ConsolePlatform&) = delete;
  ConsolePlatform& operator=(const ConsolePlatform&) = delete;

  // Writes "message: plain: TEXT" or "message: error: TEXT" and returns at once.
  void MessageBox(const std::string& text, MessageStyle style, const std::string& title) override;
  void Sleep(std::int32_t milliseconds) override;
  float SecondsSinceMidnight() override;
  // Runs the ticks that are due. Inside a wait that pumps, it then sleeps until the next tick or
  // the wait's end, whichever comes first, or a millisecond when the end has passed but the
  // clock the wait reads has not yet caught up: the busy waits pump in a loop, and must neither
  // spin a core nor overshoot. A lone pump returns at once.
  void PumpEvents() override;
  void PumpingWaitStarted(float seconds) override;
  void PumpingWaitEnded() override { waitEnd_.reset(); }
  void Randomize() override;
  float Random() override;
  void AttachTimer(Timer& timer) override;
  void DetachTimer(Timer& timer) override;
  void TimerChanged(Timer& timer) override;

  // From now on the seconds-since-midnight clock counts from this moment, as if the day had
  // just begun. Late in the day the clock's float steps are 8 ms wide, and the busy waits end on
  // those steps; a benchmark that measures the program's own overhead keeps them fine.
  void StartDayNow() { dayStart_ = std::chrono::steady_clock::now(); }

 private:
  // Milliseconds on a clock that never jumps, for the timers.
  std::int64_t NowMs() const;

  std::ostream& log_;
  std::mt19937 random_;
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  TimerSchedule timers_{*this};
  std::optional<std::chrono::steady_clock::time_point> dayStart_;
  std::optional<std::chrono::steady_clock::time_point> waitEnd_;
};

}  // namespace ombrelay
