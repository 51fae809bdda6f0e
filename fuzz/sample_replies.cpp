#include "fuzz/sample_replies.h"

#include <string>

#include "fuzz/calibration_scenario.h"
#include "fuzz/reply_recorder.h"
#include "hosts/sim_host.h"
#include "panel/nbcal.h"
#include "shell/shared_state.h"
#include "sim/sample_gauges.h"

namespace ombrelay::fuzz {

SampleRun RecordSampleRun(sim::Family family) {
  ResetSharedState();
  g_sPluginFolder = std::string(OMBRELAY_SHIPPED_APPDIR) + "/plugins";
  sim::VirtualClock clock;
  VirtualPlatform platform(clock);
  SimHost bus(clock);
  const auto gauge = sim::MakeSampleGauge(family, clock);
  sim::Measurements applied = gauge->AppliedMeasurements();
  applied.cellMv.fill(kCellMv);
  applied.batteryMv = static_cast<std::uint16_t>(kCellMv * applied.cellMv.size());
  applied.temperatures.fill(sim::Measurements::kRoomTemperature);
  gauge->ApplyMeasurements(applied);
  bus.Attach(gauge.get());
  ReplyRecorder recorder(bus);
  SampleRun run;
  {
    NBCal panel(recorder, platform);
    panel.UserControl_Show();
    ScanAndCalibrate(panel);
    run.calibrated = panel.imgCalDoneBox.Visible;
  }
  ResetSharedState();
  run.replies = recorder.Replies();
  run.messages = platform.Messages();
  return run;
}

}  // namespace ombrelay::fuzz
