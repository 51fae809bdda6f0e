// A whole voltage and temperature calibration through the panel, on every family: the gauge's
// converter and sensors are off, the engineer types what the bench applies and presses the
// button, and afterwards the live scan shows what is applied.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "panel/nbcal.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

using testing::SimBench;

struct Family {
  sim::Family family;
  // Temperature rows calibrated: those whose measured box the scan fills.
  std::vector<std::size_t> ticked;
  bool battery;
};

class CalibrationEndToEnd : public ::testing::TestWithParam<Family> {};

TEST_P(CalibrationEndToEnd, TheScanShowsWhatTheBenchApplies) {
  SimBench bench(GetParam().family);
  // Every sensor at one temperature: KELD works its second sensor out from the first.
  sim::Measurements applied = bench.gauge->AppliedMeasurements();
  applied.temperatures.fill(3000);  // 26.8 C
  bench.gauge->ApplyMeasurements(applied);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();
  panel.chkUpdates.Value = 1;
  panel.tmrScan_Timer();
  ASSERT_TRUE(bench.MessageTexts().empty()) << bench.MessageTexts().front();

  std::vector<int> stack;
  for (int cell = 0, sum = 0; cell < g_iNumCells; ++cell) {
    stack.push_back(sum += applied.cellMv[static_cast<std::size_t>(cell)]);
    panel.txtVoltage[static_cast<std::size_t>(cell)].Text = std::to_string(stack.back());
  }
  const double before = TextToDouble(panel.txtCalMeasVoltage[0].Text);
  EXPECT_GT(std::fabs(before - stack[0]), 10) << "the converter starts off";
  panel.chkVoltageCal.Value = 1;
  panel.txtBatVoltageActual.Text = std::to_string(applied.batteryMv);
  for (const std::size_t row : GetParam().ticked) {
    panel.chkTemp[row].Value = 1;
    panel.txtActualTemp[row].Text = "26.8";
  }

  bench.host.Clear();
  panel.btnCalibrate_Click();
  ASSERT_TRUE(bench.MessageTexts().empty()) << bench.MessageTexts().front();
  EXPECT_TRUE(panel.imgCalDoneBox.Visible);
  EXPECT_TRUE(panel.tmrScan.Enabled() && panel.btnCalibrate.Enabled);
  // KELD_PLUS's own refresh puts it back into calibration mode to read the raw stream.
  EXPECT_EQ(bench.gauge->InCalibrationMode(), GetParam().family == sim::Family::KeldPlus);

  panel.tmrScan_Timer();
  for (std::size_t row = 0; row < stack.size(); ++row) {
    EXPECT_NEAR(TextToDouble(panel.txtCalMeasVoltage[row].Text), stack[row], 1) << row;
  }
  if (GetParam().battery) {
    EXPECT_NEAR(TextToDouble(panel.txtBatMeasured.Text), applied.batteryMv, 1);
  }
  for (const std::size_t row : GetParam().ticked) {
    EXPECT_NEAR(TextToDouble(panel.txtMeasTemp[row].Text), 26.8, 0.2) << row;
  }
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, CalibrationEndToEnd,
                         ::testing::Values(Family{sim::Family::Keld, {1, 2}, false},
                                           Family{sim::Family::Quill, {1, 2}, false},
                                           Family{sim::Family::Morlin, {0, 1, 2}, true},
                                           Family{sim::Family::KeldPlus, {1, 2}, true}),
                         [](const auto& family) {
                           return std::string(sim::FamilyName(family.param.family));
                         });

}  // namespace
}  // namespace ombrelay
