// The calibration panel against a gauge whose every answer comes from the input: start-up, a
// scan tick and a voltage and temperature calibration, on virtual time. Boxes are fine; a crash,
// an escaping exception (but the run-time errors start-up passes on) or a run past its limits is
// a finding.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/calibration_scenario.h"
#include "fuzz/fuzzed_host.h"
#include "fuzz/run_limits.h"
#include "panel/nbcal.h"
#include "platforms/virtual_platform.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "sim/clock.h"

namespace {

// False when start-up ended in a run-time error, such as a cell above 32767 mV: start-up has no
// error trap by design, so the error passes to the host and the panel is done with.
bool StartsUp(ombrelay::NBCal& panel) {
  try {
    panel.UserControl_Show();
    return true;
  } catch (const ombrelay::RuntimeError&) {
    return false;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ombrelay;
  ResetSharedState();
  g_sPluginFolder = std::string(OMBRELAY_SHIPPED_APPDIR) + "/plugins";
  sim::VirtualClock clock;
  VirtualPlatform virtualPlatform(clock);
  fuzz::RunLimits limits(clock);
  fuzz::LimitedPlatform platform(virtualPlatform, limits);
  fuzz::FuzzedHost host({data, size}, clock, limits);
  {
    NBCal panel(host, platform);
    if (StartsUp(panel)) fuzz::ScanAndCalibrate(panel);
  }
  // Nothing of this run may point at its host and platform, gone with it.
  ResetSharedState();
  return 0;
}
