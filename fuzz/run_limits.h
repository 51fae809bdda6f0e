#pragma once
// What a gauge-reply run may take before it counts as a hang: the panels run on virtual time, so
// a run that never ends shows as virtual time or bus operations piling up, not as real time.

#include <cstdint>

#include "platforms/forwarding_platform.h"
#include "sim/clock.h"

namespace ombrelay::fuzz {

class RunLimits {
 public:
  static constexpr std::int64_t kMostVirtualMs = 10 * 60 * 1000;
  static constexpr std::int64_t kMostBusOperations = 100'000;

  explicit RunLimits(const sim::Clock& clock) : clock_(clock), startMs_(clock.NowMs()) {}

  // Both abort the run with a message once it is past its limits.
  void CountBusOperation();
  void CheckTime() const;

 private:
  const sim::Clock& clock_;
  std::int64_t startMs_;
  std::int64_t busOperations_ = 0;
};

// Checks the limits after every wait and pump, where the virtual clock moves.
class LimitedPlatform : public ForwardingPlatform {
 public:
  LimitedPlatform(Platform& inner, const RunLimits& limits)
      : ForwardingPlatform(inner), limits_(limits) {}

  void Sleep(std::int32_t milliseconds) override;
  void PumpEvents() override;

 private:
  const RunLimits& limits_;
};

}  // namespace ombrelay::fuzz
