#include "bench/calibration_run.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <vector>

#include "bench/accounting_platform.h"
#include "hosts/recording_host.h"
#include "hosts/sim_host.h"
#include "panel/nbcal.h"
#include "platforms/console_platform.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "sim/clock.h"
#include "sim/sample_gauges.h"

namespace ombrelay {
namespace {

// The temperature rows the scan fills on each family, so that they can be calibrated.
std::vector<std::size_t> ScannedSensorRows(sim::Family family) {
  return family == sim::Family::Morlin ? std::vector<std::size_t>{0, 1, 2}
                                       : std::vector<std::size_t>{1, 2};
}

void Widen(std::optional<double>& largest, double error) {
  largest = std::max(largest.value_or(0.0), error);
}

}  // namespace

CalibrationRunResult RunCalibration(sim::Family family, const std::string& appDir) {
  sim::RealClock clock;
  const auto gauge = sim::MakeSampleGauge(family, clock);
  // Every sensor at one temperature, as in a climate chamber.
  sim::Measurements applied = gauge->AppliedMeasurements();
  applied.temperatures.fill(3000);
  gauge->ApplyMeasurements(applied);
  SimHost bus(clock);
  bus.Attach(gauge.get());
  RecordingHost host(bus, [&clock] { return clock.NowMs(); });
  ConsolePlatform console(std::cerr);
  console.StartDayNow();
  AccountingPlatform platform(console);
  ResetSharedState();
  g_sPluginFolder = appDir + "/plugins";

  CalibrationRunResult result;
  result.measures = MeasureSlice(host, platform, [&] {
    NBCal panel(host, platform);
    panel.UserControl_Show();
    panel.chkUpdates.Value = 1;
    panel.tmrScan_Timer();

    std::vector<int> stack;
    for (int cell = 0, sum = 0; cell < g_iNumCells && cell < 4; ++cell) {
      stack.push_back(sum += applied.cellMv[static_cast<std::size_t>(cell)]);
      panel.txtVoltage[static_cast<std::size_t>(cell)].Text = std::to_string(stack.back());
    }
    panel.txtBatVoltageActual.Text = std::to_string(applied.batteryMv);
    panel.chkVoltageCal.Value = 1;
    const double celsius = (3000 - 2732) / 10.0;
    for (const std::size_t row : ScannedSensorRows(family)) {
      panel.chkTemp[row].Value = 1;
      panel.txtActualTemp[row].Text = FormatShortest(celsius);
    }
    panel.btnCalibrate_Click();
    panel.tmrScan_Timer();

    const auto shown = [](const TextBox& box) { return TextToDouble(box.Text); };
    for (std::size_t row = 0; row < stack.size(); ++row)
      Widen(result.maxVoltageErrorMv, std::fabs(shown(panel.txtCalMeasVoltage[row]) - stack[row]));
    // Only the row families read their battery; the others show "Err_Rd" by design.
    const bool readsBattery = family == sim::Family::Morlin || family == sim::Family::KeldPlus;
    if (g_bBatteryVSupported && readsBattery) {
      Widen(result.maxVoltageErrorMv, std::fabs(shown(panel.txtBatMeasured) - applied.batteryMv));
    }
    for (const std::size_t row : ScannedSensorRows(family))
      Widen(result.maxTemperatureErrorC, std::fabs(shown(panel.txtMeasTemp[row]) - celsius));
    panel.tmrScan.SetEnabled(false);
  });
  return result;
}

}  // namespace ombrelay
