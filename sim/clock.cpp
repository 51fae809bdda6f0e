#include "sim/clock.h"

#include <ctime>
#include <thread>

namespace ombrelay::sim {

RealClock::RealClock() : start_(std::chrono::steady_clock::now()) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  startOfDayMs_ = ((local.tm_hour * 60LL + local.tm_min) * 60LL + local.tm_sec) * 1000LL;
}

std::int64_t RealClock::NowMs() const {
  const auto elapsed = std::chrono::steady_clock::now() - start_;
  return startOfDayMs_ + std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count();
}

void RealClock::Wait(std::int64_t milliseconds) {
  if (milliseconds > 0) std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace ombrelay::sim
