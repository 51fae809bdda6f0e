#include "fuzz/run_limits.h"

#include <cstdio>
#include <cstdlib>

namespace ombrelay::fuzz {

void RunLimits::CountBusOperation() {
  if (++busOperations_ > kMostBusOperations) {
    std::fprintf(stderr, "hang: more than %lld bus operations in one run\n",
                 static_cast<long long>(kMostBusOperations));
    std::abort();
  }
  CheckTime();
}

void RunLimits::CheckTime() const {
  if (clock_.NowMs() - startMs_ > kMostVirtualMs) {
    std::fprintf(stderr, "hang: more than %lld ms of virtual time in one run\n",
                 static_cast<long long>(kMostVirtualMs));
    std::abort();
  }
}

void LimitedPlatform::Sleep(std::int32_t milliseconds) {
  ForwardingPlatform::Sleep(milliseconds);
  limits_.CheckTime();
}

void LimitedPlatform::PumpEvents() {
  ForwardingPlatform::PumpEvents();
  limits_.CheckTime();
}

}  // namespace ombrelay::fuzz
