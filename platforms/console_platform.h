#pragma once
// The platform of the command line and of benchmarks: real time and no window. Message boxes
// are lines on standard error, Sleep sleeps, the clock is the machine's, and timers tick in real
// time whenever the panels pump events.

#include <chrono>
#include <cstdint>
#include <iosfwd>
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
  // Runs the ticks that are due, then waits for the next one, but never longer than about a
  // millisecond: the panels' busy waits pump in a loop, and must not spin a core doing it.
  void PumpEvents() override;
  void Randomize() override;
  float Random() override;
  void AttachTimer(Timer& timer) override;
  void DetachTimer(Timer& timer) override;
  void TimerChanged(Timer& timer) override;

 private:
  // Milliseconds on a clock that never jumps, for the timers.
  std::int64_t NowMs() const;

  std::ostream& log_;
  std::mt19937 random_;
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  TimerSchedule timers_{*this};
};

}  // namespace ombrelay
