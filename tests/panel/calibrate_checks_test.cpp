// The checks of the voltage and temperature page, in their order: each gives its own message,
// leaves the gauge alone and hands the controls back.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "panel/nbcal.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

using testing::SimBench;

struct Check {
  const char* name;
  std::function<void(NBCal&)> entry;
  std::string message;
};

// A MORLIN panel with every entry plausible: three cells, battery input, internal sensor.
void Plausible(NBCal& panel) {
  const std::array<const char*, 4> stack = {"4000", "8000", "12000", "16000"};
  for (std::size_t row = 0; row < stack.size(); ++row) {
    panel.txtVoltage[row].Text = stack[row];
    panel.txtCalMeasVoltage[row].Text = stack[row];
  }
  panel.txtBatVoltageActual.Text = "12000";
  panel.txtBatMeasured.Text = "12000";
  panel.chkVoltageCal.Value = 1;
  panel.chkTemp[0].Value = 1;
  panel.txtActualTemp[0].Text = "25";
  panel.txtMeasTemp[0].Text = "24";
}

const std::vector<Check>& Checks() {
  static const std::vector<Check> checks = {
      {"NothingTicked",
       [](NBCal& p) {
         p.chkVoltageCal.Value = 0;
         p.chkTemp[0].Value = 0;
       },
       "Voltage and Temperature calibration selected but no check boxes checked. There is "
       "nothing to do."},
      {"VoltageMissing", [](NBCal& p) { p.txtVoltage[1].Text.clear(); },
       "Measured Cell voltage not entered for cell 2. Please enter measured voltage."},
      {"MeasuredUnread", [](NBCal& p) { p.txtCalMeasVoltage[2].Text = "Err_Rd"; },
       "Voltage Measured for Cell 3 by device is low or no communications. Please check.  "
       "Calibration will be terminated."},
      {"MeasuredLow", [](NBCal& p) { p.txtCalMeasVoltage[1].Text = "1999"; },
       "Voltage Measured for Cell 2 by device is low or no communications. Please check.  "
       "Calibration will be terminated."},
      {"EnteredLow", [](NBCal& p) { p.txtVoltage[2].Text = "8396"; },
       "Voltage entered for cell voltage 3 appears low. Please check value entered.  "
       "Calibration will be terminated."},
      {"EnteredHigh", [](NBCal& p) { p.txtVoltage[0].Text = "4501"; },
       "Voltage entered for cell voltage 1 appears high. Please check value entered.  "
       "Calibration will be terminated."},
      {"BatteryUnread", [](NBCal& p) { p.txtBatMeasured.Text = "Err_Rd"; },
       "Measured Battery voltage is not available .  Please check.  Calibration will be "
       "terminated."},
      {"BatteryHigh", [](NBCal& p) { p.txtBatVoltageActual.Text = "18001"; },
       "Measured Battery voltage is over 2 volts greater than stack voltage. Please check. "
       "Calibration will be terminiated."},
      {"BatteryLow", [](NBCal& p) { p.txtBatVoltageActual.Text = "3999"; },
       "Measured Battery voltage is lower than 2 volts below stack voltage. Please check. "
       "Calibration will be terminiated."},
      {"TemperatureMissing", [](NBCal& p) { p.txtActualTemp[0].Text.clear(); },
       "Actual Temperature value not entered for Internal Temp. Please enter actual "
       "temperature."},
      {"TemperatureUnread", [](NBCal& p) { p.txtMeasTemp[0].Text = "Err_Rd"; },
       "Temperature Measured for Internal Temp is low or no communications. Please correct. "
       "Calibration will be terminated."},
      {"TemperatureHigh", [](NBCal& p) { p.txtActualTemp[0].Text = "85.1"; },
       "Temperature entered for Internal Temp is high. Please correct. Calibration will be "
       "terminated."},
      {"TemperatureFar",
       [](NBCal& p) {
         p.txtActualTemp[0].Text = "48.1";
         p.txtMeasTemp[0].Text = "24";
       },
       "Temperature entered for Internal Temp is more than allowed. Correction is approximately "
       "12 deg K"},
      {"NotANumber", [](NBCal& p) { p.txtVoltage[3].Text = "4k"; },
       "Invalid value entered! Error description:Type mismatch"},
  };
  return checks;
}

class CalibrateChecks : public ::testing::TestWithParam<Check> {};

TEST_P(CalibrateChecks, RefuseWithTheirMessageAndLeaveTheGaugeAlone) {
  SimBench bench(sim::Family::Morlin);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();
  ASSERT_TRUE(bench.MessageTexts().empty()) << bench.MessageTexts().front();
  Plausible(panel);
  GetParam().entry(panel);
  bench.host.Clear();

  panel.btnCalibrate_Click();
  EXPECT_EQ(bench.MessageTexts(), std::vector<std::string>{GetParam().message});
  for (const BusOperation& operation : bench.host.Operations()) {
    EXPECT_NE(operation.op, "WriteSMBusBlock");
    EXPECT_TRUE(!operation.word || (*operation.word != 0x002D && *operation.word != 0xF081))
        << "no calibration mode, no raw output";
  }
  EXPECT_TRUE(panel.btnCalibrate.Enabled && panel.chkVoltageCal.Enabled);
  EXPECT_FALSE(panel.imgCalDoneBox.Visible);
  EXPECT_TRUE(panel.tmrScan.Enabled());
}

INSTANTIATE_TEST_SUITE_P(InOrder, CalibrateChecks, ::testing::ValuesIn(Checks()),
                         [](const auto& check) { return std::string(check.param.name); });

TEST(CalibrateChecksEdges, LimitsAreInclusiveAndOnlyConfiguredRowsAreChecked) {
  SimBench bench(sim::Family::Morlin);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();
  Plausible(panel);
  // Three cells: row 3 is never checked, only parsed.
  panel.txtVoltage[3].Text = "1";
  panel.txtVoltage[1].Text = "5598";
  panel.txtVoltage[2].Text = "13500";
  panel.txtCalMeasVoltage[2].Text = "3000";
  panel.txtBatVoltageActual.Text = "19500";  // row top 13500 + 6000
  panel.txtActualTemp[0].Text = "48";        // 24.0 from the measured 24
  bench.gauge->RefuseCalibrationMode(true);  // so that the calibration itself fails early
  panel.btnCalibrate_Click();
  EXPECT_EQ(bench.MessageTexts(),
            (std::vector<std::string>{"Unable to request device to output cal values.",
                                      "Can not set to calibration mode."}))
      << "every check passed";
}

}  // namespace
}  // namespace ombrelay
