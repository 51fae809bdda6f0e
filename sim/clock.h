#pragma once
// The simulated gauge's sense of time. Tests and benchmarks share one virtual clock between the
// gauge and the virtual platform, so that waits, timer ticks and the gauge's own counters
// interleave as they would in real time, in no real time at all; the bench on a screen runs the
// gauge on the real clock.

#include <chrono>
#include <cstdint>

namespace ombrelay::sim {

class Clock {
 public:
  static constexpr std::int64_t kMillisecondsPerDay = 86'400'000;

  virtual ~Clock() = default;
  // Milliseconds since the clock's day 0 began; never wraps.
  virtual std::int64_t NowMs() const = 0;
  // Returns when milliseconds have passed on this clock.
  virtual void Wait(std::int64_t milliseconds) = 0;

  // Milliseconds since the last midnight.
  std::int64_t TimeOfDayMs() const { return NowMs() % kMillisecondsPerDay; }
};

// Moves only when told to.
class VirtualClock : public Clock {
 public:
  // Starts at the given time of day, in milliseconds since midnight.
  explicit VirtualClock(std::int64_t startMs = 9 * 3'600'000) : nowMs_(startMs) {}

  std::int64_t NowMs() const override { return nowMs_; }
  void Wait(std::int64_t milliseconds) override { Advance(milliseconds); }
  void Advance(std::int64_t milliseconds) {
    if (milliseconds > 0) nowMs_ += milliseconds;
  }

 private:
  std::int64_t nowMs_;
};

// The machine's monotonic clock, counted from the local time of day at construction.
class RealClock : public Clock {
 public:
  RealClock();
  std::int64_t NowMs() const override;
  void Wait(std::int64_t milliseconds) override;

 private:
  std::chrono::steady_clock::time_point start_;
  std::int64_t startOfDayMs_;
};

}  // namespace ombrelay::sim
