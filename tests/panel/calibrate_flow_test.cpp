// The voltage and temperature calibration through its button, whole, on every family: the
// order of capture, calculation, write and exit, and of the boxes when one of them fails.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "shell/shared_state.h"
#include "tests/support/expected_trace.h"
#include "tests/support/panel_bench.h"

namespace ombrelay {
namespace {

using testing::MatchesTrace;
using testing::PanelBench;

class CalibrateFlow : public ::testing::TestWithParam<sim::Family> {};

TEST_P(CalibrateFlow, CapturesComputesWritesAndLeaves) {
  PanelBench bench(GetParam());
  bench.ReadyToCalibrate();
  // Another program has set a temperature offset to 5 since start-up, and the scan shows the
  // sensor as it reads now: the calibration works from the gauge's present offset, not from
  // what start-up read.
  if (GetParam() == sim::Family::Morlin || GetParam() == sim::Family::KeldPlus) {
    const std::size_t offset = GetParam() == sim::Family::Morlin ? 26 : 27;  // internal, TS1
    bench.sim.gauge->SetDataflashBytes(offset, std::vector<std::uint8_t>{5});
    bench.panel.tmrScan_Timer();
    bench.sim.Restart();
  }
  bench.panel.btnCalibrate_Click();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/calibrate-" + testing::Name(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, CalibrateFlow, ::testing::ValuesIn(testing::kEveryFamily),
                         testing::FamilyTestName);

TEST(CalibrateFlow, ANewPressTakesTheDoneMarkAwayFirst) {
  PanelBench bench(sim::Family::Morlin);
  bench.ReadyToCalibrate();
  bench.panel.btnCalibrate_Click();
  ASSERT_TRUE(bench.panel.imgCalDoneBox.Visible);
  bench.sim.Restart();
  bench.panel.chkVoltageCal.Value = 0;
  for (CheckBox& box : bench.panel.chkTemp)
    box.Value = 0;
  bench.panel.btnCalibrate_Click();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/calibrate-again-refused-morlin"));
}

// The user is told how far the capture and the write are, alongside the same bus trace as above.
TEST(CalibrateFlow, TellsHowFarTheCaptureAndTheWriteAre) {
  PanelBench bench(sim::Family::Morlin);
  bench.ReadyToCalibrate();
  const std::size_t before = bench.sim.platform.ProgressSeen().size();
  bench.panel.btnCalibrate_Click();
  std::vector<std::string> expected;
  for (int sample = 0; sample <= g_iNumSamples; ++sample)
    expected.push_back("Capturing raw calibration samples " + std::to_string(sample) + "/" +
                       std::to_string(g_iNumSamples));
  expected.insert(expected.end(), {"ended", "Writing calibration dataflash 0/0", "ended"});
  const std::vector<std::string>& seen = bench.sim.platform.ProgressSeen();
  EXPECT_EQ(
      std::vector<std::string>(seen.begin() + static_cast<std::ptrdiff_t>(before), seen.end()),
      expected);
  EXPECT_GE(g_iNumSamples, 2);
}

struct Failure {
  const char* name;
  std::function<void(PanelBench&)> arrange;
};

class CalibrateFailure : public ::testing::TestWithParam<Failure> {};

// Each failure on MORLIN, the family whose exit does most: where its boxes stand against the
// exit, and what it leaves of the panel.
TEST_P(CalibrateFailure, ShowsItsBoxesInTheirPlaceAroundTheExit) {
  PanelBench bench(sim::Family::Morlin);
  bench.ReadyToCalibrate();
  GetParam().arrange(bench);
  bench.panel.btnCalibrate_Click();
  EXPECT_TRUE(
      MatchesTrace(bench.Trace(), std::string("panel/calibrate-") + GetParam().name + "-morlin"));
}

INSTANTIATE_TEST_SUITE_P(
    Morlin, CalibrateFailure,
    ::testing::Values(
        Failure{"enter-fails",
                [](PanelBench& bench) { bench.sim.gauge->RefuseCalibrationMode(true); }},
        Failure{"calculation-fails",
                [](PanelBench& bench) { bench.panel.txtActualTemp[0].Text = "40"; }},
        Failure{"write-fails",
                [](PanelBench& bench) { bench.sim.gauge->StoreWrongDataflashByteOnNextWrite(5); }},
        Failure{"runtime-error",
                [](PanelBench& bench) {
                  // The third voltage block of the press is the first that ExitCalibrationMode
                  // shows in the boxes.
                  bench.sim.After(testing::OnWord(0x0071), 3, [&bench] {
                    bench.sim.gauge->CorruptNextRead(sim::Transfer::BlockRead, 1);
                  });
                }}),
    [](const auto& failure) { return testing::TestNameOf(failure.param.name); });

TEST(CalibrateFailure, TheHandlerStartsAStoppedScan) {
  PanelBench bench(sim::Family::Morlin);
  bench.sim.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  bench.panel.UserControl_Show();
  bench.sim.Restart();
  bench.panel.chkTemp[0].Value = 1;
  bench.panel.txtActualTemp[0].Text = "25";
  bench.panel.btnCalibrate_Click();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/calibrate-runtime-error-sealed-morlin"));
}

}  // namespace
}  // namespace ombrelay
