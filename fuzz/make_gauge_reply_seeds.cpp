// Writes one gauge-reply seed per family into the folder given: the answers of the sample gauge
// to the fuzzer's whole run, with the bench applying the pack the run's entries describe, so that
// start-up succeeds and the calibration runs to its end. Prints the boxes each run showed.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "fuzz/calibration_scenario.h"
#include "fuzz/reply_recorder.h"
#include "hosts/sim_host.h"
#include "panel/nbcal.h"
#include "platforms/virtual_platform.h"
#include "shell/shared_state.h"
#include "sim/family.h"
#include "sim/sample_gauges.h"

namespace {

using namespace ombrelay;

void WriteSeed(sim::Family family, const std::filesystem::path& folder) {
  ResetSharedState();
  g_sPluginFolder = std::string(OMBRELAY_SHIPPED_APPDIR) + "/plugins";
  sim::VirtualClock clock;
  VirtualPlatform platform(clock);
  SimHost bus(clock);
  const auto gauge = sim::MakeSampleGauge(family, clock);
  sim::Measurements applied = gauge->AppliedMeasurements();
  applied.cellMv.fill(fuzz::kCellMv);
  applied.batteryMv = static_cast<std::uint16_t>(fuzz::kCellMv * applied.cellMv.size());
  applied.temperatures.fill(sim::Measurements::kRoomTemperature);
  gauge->ApplyMeasurements(applied);
  bus.Attach(gauge.get());
  fuzz::ReplyRecorder recorder(bus);
  {
    NBCal panel(recorder, platform);
    panel.UserControl_Show();
    fuzz::ScanAndCalibrate(panel);
  }
  ResetSharedState();

  const std::string name = std::string(sim::FamilyName(family)) + "-calibration";
  std::ofstream(folder / name, std::ios::binary)
      .write(reinterpret_cast<const char*>(recorder.Replies().data()),
             static_cast<std::streamsize>(recorder.Replies().size()));
  std::printf("%s: %zu bytes\n", name.c_str(), recorder.Replies().size());
  for (const RecordedMessage& message : platform.Messages())
    std::printf("  box: %s\n", message.text.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  for (const sim::Family family :
       {sim::Family::Keld, sim::Family::Quill, sim::Family::Morlin, sim::Family::KeldPlus}) {
    WriteSeed(family, argv[1]);
  }
  return 0;
}
