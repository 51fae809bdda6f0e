#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "panel/nbcal.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

using testing::SimBench;

std::vector<std::string> Texts(const std::array<TextBox, 4>& boxes) {
  return {boxes[0].Text, boxes[1].Text, boxes[2].Text, boxes[3].Text};
}

class LiveScan : public ::testing::Test {
 protected:
  void StartUp(sim::Family family) {
    bench = std::make_unique<SimBench>(family);
    panel = std::make_unique<NBCal>(bench->host, bench->platform);
    panel->UserControl_Show();
    ASSERT_TRUE(bench->MessageTexts().empty()) << bench->MessageTexts().front();
    bench->host.Clear();
  }

  std::unique_ptr<SimBench> bench;
  std::unique_ptr<NBCal> panel;
};

TEST_F(LiveScan, ATickDoesNothingUntilUpdatesAreChecked) {
  StartUp(sim::Family::Morlin);
  panel->DisableCalibrationControls();
  panel->tmrScan_Timer();
  EXPECT_TRUE(bench->host.Operations().empty());
  EXPECT_FALSE(panel->btnCalibrate.Enabled);

  panel->chkUpdates.Value = 1;
  bench->platform.RunFor(2000);
  EXPECT_FALSE(bench->host.Operations().empty()) << "the running timer ticks";
  EXPECT_TRUE(panel->btnCalibrate.Enabled);
}

TEST_F(LiveScan, BlockCellsAreSummedIntoStackVoltages) {
  StartUp(sim::Family::Morlin);
  for (const auto& [slot, value] : {std::pair{0, "3000"}, {1, "3100"}, {2, ""}, {3, "3200"}})
    g_atMODBlocks[0].atFields[slot].sValue = value;
  g_atMODBlocks[0].atFields[4].sValue = "";
  g_atMODBlocks[1].atFields[0].sValue = "25.3";
  panel->TransferMODValuestoDisplay();
  EXPECT_EQ(Texts(panel->txtCalMeasVoltage),
            (std::vector<std::string>{"3000", "6100", "Err_Rd", "9300"}));
  EXPECT_EQ(panel->txtBatMeasured.Text, "Err_Rd");
  EXPECT_EQ(panel->txtMeasTemp[0].Text, "25.3");

  // A stack beyond 16 bits ends the tick without a word and without enabling the controls.
  g_atMODBlocks[0].atFields[0].sValue = "32000";
  EXPECT_THROW(panel->TransferMODValuestoDisplay(), RuntimeError);
}

TEST_F(LiveScan, KeldReadsWordsAndEndsATickQuietlyOnOverflow) {
  StartUp(sim::Family::Keld);
  g_bBatteryVSupported = true;
  bench->gauge->SetWord(0x08, 2982);
  bench->gauge->SetWord(0x0A, 0xFFFE);
  panel->chkUpdates.Value = 1;
  panel->tmrScan_Timer();
  EXPECT_EQ(panel->txtMeasTemp[0].Text, "25") << "plain decimal, not the block format";
  EXPECT_EQ(panel->txtMeasuredCurrent.Text, "-2");
  EXPECT_EQ(panel->txtBatMeasured.Text, "Err_Rd") << "KELD has no battery read";

  bench->gauge->FailNext(sim::Transfer::WordRead, 1);
  panel->tmrScan_Timer();
  EXPECT_EQ(Texts(panel->txtCalMeasVoltage), std::vector<std::string>(4, "Err_Rd"));

  for (std::uint8_t command = 0x38; command <= 0x3B; ++command)
    bench->gauge->SetWord(command, 20000);
  panel->DisableCalibrationControls();
  panel->tmrScan_Timer();
  EXPECT_TRUE(bench->MessageTexts().empty());
  EXPECT_FALSE(panel->btnCalibrate.Enabled);
}

TEST_F(LiveScan, DataflashRefreshLeavesTheTimerOnEvenAfterAFailedRead) {
  StartUp(sim::Family::Quill);
  const std::string before = panel->DFGrid.Cell(3, 1).Text;
  bench->gauge->SetDisconnected(true);
  panel->tmrScan.SetEnabled(false);
  panel->ReadandUpdateAllDFValues();
  EXPECT_TRUE(panel->tmrScan.Enabled());
  EXPECT_EQ(panel->DFGrid.Cell(3, 1).Text, before) << "the table keeps its old values";
}

}  // namespace
}  // namespace ombrelay
