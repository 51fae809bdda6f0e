#pragma once
// A SimBench on a sample gauge with the program's settings as start-up leaves them for that
// gauge under the shipped configuration.

#include <string>

#include "sim/family.h"
#include "tests/support/expected_trace.h"
#include "tests/support/sim_bench.h"

namespace ombrelay::testing {

// The program's settings for a gauge of family, as start-up sets them from the shipped
// config.ini, the dataflash map and the calibration tables.
void ApplyShippedSettings(sim::Family family);

class GaugeBench : public SimBench {
 public:
  explicit GaugeBench(sim::Family family);

  // Passes when the trace since the last restart is the expected trace name.
  ::testing::AssertionResult Follows(const std::string& name) {
    return MatchesTrace(trace.Lines(), name);
  }
};

}  // namespace ombrelay::testing
