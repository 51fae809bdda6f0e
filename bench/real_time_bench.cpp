#include "bench/real_time_bench.h"

#include "shell/shared_state.h"
#include "sim/sample_gauges.h"

namespace ombrelay {

RealTimeBench::RealTimeBench(sim::Family family, const std::string& appDir)
    : gauge(sim::MakeSampleGauge(family, clock)) {
  bus.Attach(gauge.get());
  console.StartDayNow();
  ResetSharedState();
  g_sPluginFolder = appDir + "/plugins";
}

}  // namespace ombrelay
