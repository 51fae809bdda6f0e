// The offsets, the current and the pack voltage calibrated through the panel's buttons on every
// family: the gauge's sense resistor is a few percent off and its offsets are not the ones it
// stores, and afterwards the live scan shows the current and pack voltage the bench applies.

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "panel/nbcal.h"
#include "shell/numeric.h"
#include "tests/support/expected_trace.h"
#include "tests/support/panel_bench.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

using testing::SimBench;

class CurrentCalibrationEndToEnd : public ::testing::TestWithParam<sim::Family> {
 protected:
  void Apply(std::int16_t currentMa) {
    sim::Measurements applied = bench.gauge->AppliedMeasurements();
    applied.currentMa = currentMa;
    bench.gauge->ApplyMeasurements(applied);
    panel.tmrScan_Timer();
  }
  double Shown(const TextBox& box) const { return TextToDouble(box.Text); }

  SimBench bench{GetParam()};
  NBCal panel{bench.host, bench.platform};
};

TEST_P(CurrentCalibrationEndToEnd, TheScanShowsWhatTheBenchApplies) {
  panel.UserControl_Show();
  panel.chkUpdates.Value = 1;
  Apply(-2000);
  EXPECT_GT(std::fabs(Shown(panel.txtMeasuredCurrent) + 2000), 40) << "the gauge starts off";

  Apply(0);
  panel.btnCalCCCounter_Click();
  EXPECT_TRUE(panel.imageCCOffsetDone.Visible);
  // QUILL reads its calibration table at start-up only, and the board offset builds on the
  // coulomb counter offset the table holds: the engineer shows the panel anew in between.
  if (GetParam() == sim::Family::Quill) {
    panel.UserControl_Show();
    panel.chkUpdates.Value = 1;
  }
  panel.btnBoardOffset_Click();
  EXPECT_TRUE(panel.ImgBoardOffset.Visible);
  Apply(-2000);
  panel.txtActualCurrent.Text = "-2000";
  panel.btnPackCurrent_Click();
  EXPECT_TRUE(panel.ImgPackCurrent.Visible);
  ASSERT_TRUE(bench.MessageTexts().empty()) << bench.MessageTexts().front();

  Apply(-2000);
  EXPECT_LE(std::fabs(Shown(panel.txtMeasuredCurrent) + 2000), 3);
  Apply(0);
  EXPECT_LE(std::fabs(Shown(panel.txtMeasuredCurrent)), 1);

  if (GetParam() == sim::Family::Morlin || GetParam() == sim::Family::KeldPlus) {
    const std::uint16_t packMv = bench.gauge->AppliedMeasurements().packMv;
    EXPECT_GT(std::fabs(Shown(panel.txtPackMeasured) - packMv), 20) << "the pack pin starts off";
    panel.txtPackActualVoltage.Text = std::to_string(packMv);
    panel.btnPackVoltage_Click();
    EXPECT_TRUE(panel.imgPackVoltage.Visible);
    panel.tmrScan_Timer();
    EXPECT_LE(std::fabs(Shown(panel.txtPackMeasured) - packMv), 1);
  }
  EXPECT_TRUE(bench.MessageTexts().empty()) << bench.MessageTexts().front();
  EXPECT_TRUE(panel.tmrScan.Enabled());
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, CurrentCalibrationEndToEnd,
                         ::testing::ValuesIn(testing::kEveryFamily), testing::FamilyTestName);

}  // namespace
}  // namespace ombrelay

namespace ombrelay {
namespace {

// Each button's whole trace on a panel started with the current the trace assumes applied and
// chkUpdates unchecked, pressed right after start-up.
struct Press {
  sim::Family family;
  const char* trace;
  std::int16_t currentMa;
  void (NBCal::*click)();
};

class ButtonTrace : public ::testing::TestWithParam<Press> {};

TEST_P(ButtonTrace, FollowsItsTrace) {
  const Press press = GetParam();
  testing::PanelBench bench(press.family);
  sim::Measurements applied = bench.sim.gauge->AppliedMeasurements();
  applied.currentMa = press.currentMa;
  bench.sim.gauge->ApplyMeasurements(applied);
  bench.StartUp();
  bench.panel.txtActualCurrent.Text = std::to_string(press.currentMa);
  bench.panel.txtPackActualVoltage.Text = std::to_string(applied.packMv);
  (bench.panel.*press.click)();
  EXPECT_TRUE(testing::MatchesTrace(bench.Trace(), press.trace));
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, ButtonTrace,
    ::testing::Values(Press{sim::Family::Morlin, "panel/cc-offset-button-morlin", 0,
                            &NBCal::btnCalCCCounter_Click},
                      Press{sim::Family::Morlin, "panel/board-offset-button-morlin", 0,
                            &NBCal::btnBoardOffset_Click},
                      Press{sim::Family::Morlin, "panel/pack-voltage-button-morlin", 0,
                            &NBCal::btnPackVoltage_Click},
                      Press{sim::Family::Morlin, "panel/current-button-morlin", -2000,
                            &NBCal::btnPackCurrent_Click},
                      Press{sim::Family::Quill, "panel/board-offset-button-quill", 0,
                            &NBCal::btnBoardOffset_Click},
                      Press{sim::Family::Quill, "panel/current-button-quill", -2000,
                            &NBCal::btnPackCurrent_Click}),
    [](const ::testing::TestParamInfo<Press>& press) {
      return testing::TestNameOf(std::string(press.param.trace).substr(6));
    });

}  // namespace
}  // namespace ombrelay
