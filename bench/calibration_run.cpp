#include "bench/calibration_run.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "bench/real_time_bench.h"
#include "hosts/recording_host.h"
#include "panel/nbcal.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"

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

nlohmann::ordered_json OrNull(const std::optional<double>& value) {
  return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json(nullptr);
}

double Shown(const TextBox& box) {
  return TextToDouble(box.Text);
}

// The discharge current the current calibration runs at, as the engineer types it.
constexpr std::int16_t kCalibrationCurrentMa = -2000;

}  // namespace

CalibrationRun RunCalibrations(sim::Family family, const std::string& appDir) {
  RealTimeBench bench(family, appDir);
  RecordingHost& host = bench.host;
  AccountingPlatform& platform = bench.platform;
  const std::unique_ptr<sim::Gauge>& gauge = bench.gauge;
  // Every sensor at one temperature, as in a climate chamber.
  sim::Measurements applied = gauge->AppliedMeasurements();
  applied.temperatures.fill(3000);
  gauge->ApplyMeasurements(applied);

  // Only the row families read their battery and have a formula for the pack gain; the others
  // show "Err_Rd" for the battery and keep the pack gain they hold, by design.
  const bool rowFamily = family == sim::Family::Morlin || family == sim::Family::KeldPlus;
  CalibrationRun run;
  NBCal panel(host, platform);
  const auto press = [&](const char* calibration, void (NBCal::*click)(), const Picture& doneMark) {
    const SliceMeasures measures = MeasureSlice(host, platform, [&] { (panel.*click)(); });
    run.rows.push_back({calibration, measures, doneMark.Visible, {}});
  };
  // The bench's current, and the scan that shows it.
  const auto applyCurrent = [&](std::int16_t currentMa) {
    applied.currentMa = currentMa;
    gauge->ApplyMeasurements(applied);
    panel.tmrScan_Timer();
  };
  const auto currentError = [&] {
    return std::fabs(Shown(panel.txtMeasuredCurrent) - applied.currentMa);
  };

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
  press("voltage_temperature", &NBCal::btnCalibrate_Click, panel.imgCalDoneBox);
  panel.tmrScan_Timer();
  std::optional<double> voltageError;
  for (std::size_t row = 0; row < stack.size(); ++row)
    Widen(voltageError, std::fabs(Shown(panel.txtCalMeasVoltage[row]) - stack[row]));
  if (g_bBatteryVSupported && rowFamily) {
    Widen(voltageError, std::fabs(Shown(panel.txtBatMeasured) - applied.batteryMv));
  }
  std::optional<double> temperatureError;
  for (const std::size_t row : ScannedSensorRows(family))
    Widen(temperatureError, std::fabs(Shown(panel.txtMeasTemp[row]) - celsius));
  run.rows.back().errors = {{"max_voltage_error_mv", OrNull(voltageError)},
                            {"max_temperature_error_c", OrNull(temperatureError)}};

  // The offsets at no load: what the scan then shows is what is left of them.
  applyCurrent(0);
  press("cc_offset", &NBCal::btnCalCCCounter_Click, panel.imageCCOffsetDone);
  panel.tmrScan_Timer();
  run.rows.back().errors = {{"max_current_error_ma", currentError()}};
  // QUILL reads its calibration table at start-up only, and the board offset builds on the
  // coulomb counter offset the table holds: the engineer shows the panel anew in between.
  if (family == sim::Family::Quill) {
    panel.UserControl_Show();
    panel.chkUpdates.Value = 1;
  }
  press("board_offset", &NBCal::btnBoardOffset_Click, panel.ImgBoardOffset);
  panel.tmrScan_Timer();
  run.rows.back().errors = {{"max_current_error_ma", currentError()}};

  applyCurrent(kCalibrationCurrentMa);
  panel.txtActualCurrent.Text = std::to_string(kCalibrationCurrentMa);
  press("current", &NBCal::btnPackCurrent_Click, panel.ImgPackCurrent);
  applyCurrent(kCalibrationCurrentMa);
  const double underLoad = currentError();
  applyCurrent(0);
  run.rows.back().errors = {{"max_current_error_ma", std::max(underLoad, currentError())}};

  panel.txtPackActualVoltage.Text = std::to_string(applied.packMv);
  press("pack_voltage", &NBCal::btnPackVoltage_Click, panel.imgPackVoltage);
  panel.tmrScan_Timer();
  run.rows.back().errors = {
      {"max_pack_error_mv",
       OrNull(rowFamily ? std::optional(std::fabs(Shown(panel.txtPackMeasured) - applied.packMv))
                        : std::nullopt)}};

  panel.tmrScan.SetEnabled(false);
  run.messages = platform.Messages();
  return run;
}

}  // namespace ombrelay
