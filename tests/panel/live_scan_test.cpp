// The live scan: the tick on every family, its early ends, and the refresh of the dataflash
// values.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "tests/support/expected_trace.h"
#include "tests/support/panel_bench.h"

namespace ombrelay {
namespace {

using testing::MatchesTrace;
using testing::Name;
using testing::PanelBench;

std::vector<std::string> Texts(const std::array<TextBox, 4>& boxes) {
  return {boxes[0].Text, boxes[1].Text, boxes[2].Text, boxes[3].Text};
}

// A started panel with the controls disabled, as a calibration leaves them while it runs, and
// whatever arrange sets up after start-up.
void Tick(
    PanelBench& bench, bool updates, const std::function<void()>& arrange = [] {}) {
  bench.StartUp();
  arrange();
  bench.panel.DisableCalibrationControls();
  bench.panel.chkUpdates.Value = updates ? 1 : 0;
  bench.panel.tmrScan_Timer();
}

class LiveScan : public ::testing::TestWithParam<sim::Family> {};

TEST_P(LiveScan, ATickRefreshesOnlyWhileUpdatesAreChecked) {
  PanelBench unchecked(GetParam());
  Tick(unchecked, false);
  EXPECT_TRUE(MatchesTrace(unchecked.Trace(), "panel/tick-unchecked"));

  PanelBench checked(GetParam());
  Tick(checked, true);
  EXPECT_TRUE(MatchesTrace(checked.Trace(), "panel/tick-" + Name(GetParam())));
}

TEST_P(LiveScan, ATickShowsWhatTheGaugeMeasuresNow) {
  PanelBench bench(GetParam());
  bench.StartUp();
  bench.panel.chkUpdates.Value = 1;
  bench.panel.tmrScan_Timer();
  const double before = TextToDouble(bench.panel.txtCalMeasVoltage[0].Text);
  sim::Measurements applied = bench.sim.gauge->AppliedMeasurements();
  applied.cellMv[0] += 200;
  applied.temperatures.fill(3100);
  bench.sim.gauge->ApplyMeasurements(applied);
  bench.panel.tmrScan_Timer();
  EXPECT_NEAR(TextToDouble(bench.panel.txtCalMeasVoltage[0].Text) - before, 200, 20);
  // MORLIN's grid follows both of its blocks.
  for (const MODBlock& block : {g_atMODBlocks[0], g_atMODBlocks[1]}) {
    if (GetParam() != sim::Family::Morlin) break;
    const MODField& first = block.atFields[0];
    EXPECT_EQ(bench.panel.displaygrid.Cell(first.iGridRow, 1).Text, first.sValue) << block.sName;
  }
}

TEST_P(LiveScan, DataflashRefreshStopsTheScanForItsRead) {
  PanelBench bench(GetParam());
  bench.StartUp();
  bench.panel.ReadandUpdateAllDFValues();
  EXPECT_TRUE(
      MatchesTrace(bench.Trace(), "panel/read-and-update-all-df-values-" + Name(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, LiveScan, ::testing::ValuesIn(testing::kEveryFamily),
                         testing::FamilyTestName);

struct TickCase {
  const char* trace;
  sim::Family family;
  std::function<void(PanelBench&)> arrange;  // after start-up
  bool batteryShown = true;                  // false where the battery's box must be left alone
};

class TickEnds : public ::testing::TestWithParam<TickCase> {};

TEST_P(TickEnds, AsTheGaugeAndTheConfigurationHaveIt) {
  PanelBench bench(GetParam().family);
  Tick(bench, true, [&bench] { GetParam().arrange(bench); });
  EXPECT_TRUE(MatchesTrace(bench.Trace(), std::string("panel/") + GetParam().trace));
  if (!GetParam().batteryShown) {
    EXPECT_EQ(bench.panel.txtBatMeasured.Text, "kept");
  }
}

INSTANTIATE_TEST_SUITE_P(
    Each, TickEnds,
    ::testing::Values(
        // A MORLIN that stops answering costs no message.
        TickCase{"tick-gauge-gone-morlin", sim::Family::Morlin,
                 [](PanelBench& bench) { bench.sim.gauge->SetDisconnected(true); }},
        // Blocks that cannot be requested end the tick with a box.
        TickCase{"tick-blocks-unread-morlin", sim::Family::Morlin,
                 [](PanelBench& bench) {
                   bench.sim.After(testing::OnCommand(0x0D), 1, [&bench] {
                     bench.sim.gauge->FailNext(sim::Transfer::WordWrite, 2);
                   });
                 }},
        // KELD_PLUS reports a sensor word that overflows through its own handler.
        TickCase{"tick-sensor-overflow-keld_plus", sim::Family::KeldPlus,
                 [](PanelBench& bench) {
                   bench.sim.After(testing::OnCommand(0x0A), 1, [&bench] {
                     bench.sim.gauge->CorruptNextRead(sim::Transfer::WordRead, 1);
                   });
                 }},
        // Without a battery input the pack voltage alone still waits twice for the raw stream,
        // and the battery's box is left alone.
        TickCase{"tick-without-battery-keld_plus", sim::Family::KeldPlus,
                 [](PanelBench& bench) {
                   g_bBatteryVSupported = false;
                   bench.panel.txtBatMeasured.Text = "kept";
                 },
                 false}),
    [](const auto& tick) { return testing::TestNameOf(tick.param.trace); });

TEST(LiveScanValues, BlockCellsAreSummedIntoStackVoltages) {
  PanelBench bench(sim::Family::Morlin);
  bench.StartUp();
  for (const auto& [slot, value] : {std::pair{0, "3000"}, {1, "3100"}, {2, ""}, {3, "3200"}})
    g_atMODBlocks[0].atFields[slot].sValue = value;
  g_atMODBlocks[0].atFields[4].sValue = "";
  g_atMODBlocks[1].atFields[0].sValue = "25.3";
  bench.panel.TransferMODValuestoDisplay();
  EXPECT_EQ(Texts(bench.panel.txtCalMeasVoltage),
            (std::vector<std::string>{"3000", "6100", "Err_Rd", "9300"}));
  EXPECT_EQ(bench.panel.txtBatMeasured.Text, "Err_Rd");
  EXPECT_EQ(bench.panel.txtMeasTemp[0].Text, "25.3");

  // A stack beyond 16 bits is a run-time error for the caller's handler.
  g_atMODBlocks[0].atFields[0].sValue = "32000";
  EXPECT_THROW(bench.panel.TransferMODValuestoDisplay(), RuntimeError);
}

TEST(LiveScanValues, KeldShowsWordsInPlainDecimalAndEndsATickQuietlyOnOverflow) {
  PanelBench bench(sim::Family::Keld);
  bench.StartUp();
  NBCal& panel = bench.panel;
  g_bBatteryVSupported = true;
  bench.sim.gauge->SetWord(0x08, 2982);
  bench.sim.gauge->SetWord(0x0A, 0xFFFE);
  panel.chkUpdates.Value = 1;
  panel.tmrScan_Timer();
  EXPECT_EQ(panel.txtMeasTemp[0].Text, "25") << "plain decimal, not the block format";
  EXPECT_EQ(panel.txtMeasuredCurrent.Text, "-2");
  EXPECT_EQ(panel.txtBatMeasured.Text, "Err_Rd") << "KELD has no battery read";

  bench.sim.gauge->FailNext(sim::Transfer::WordRead, 1);
  panel.tmrScan_Timer();
  EXPECT_EQ(Texts(panel.txtCalMeasVoltage), std::vector<std::string>(4, "Err_Rd"));

  // Without an internal sensor its box is left alone.
  g_bIntTSSupported = false;
  panel.txtMeasTemp[0].Text = "kept";
  panel.tmrScan_Timer();
  EXPECT_EQ(panel.txtMeasTemp[0].Text, "kept");

  // A pack word of 32768 or more overflows as an unsigned 16-bit read, as does a stack sum:
  // each ends the tick before the controls are given back.
  bench.sim.gauge->SetWord(0x5A, 0x9000);
  panel.txtPackMeasured.Text = "kept";
  panel.DisableCalibrationControls();
  panel.tmrScan_Timer();
  EXPECT_EQ(panel.txtPackMeasured.Text, "kept");
  EXPECT_FALSE(panel.btnCalibrate.Enabled);
  bench.sim.gauge->SetWord(0x5A, 12000);
  for (std::uint8_t command = 0x38; command <= 0x3B; ++command)
    bench.sim.gauge->SetWord(command, 20000);
  panel.tmrScan_Timer();
  EXPECT_TRUE(bench.sim.MessageTexts().empty());
  EXPECT_FALSE(panel.btnCalibrate.Enabled);
}

TEST(LiveScanValues, KeldPlusShowsARawBatteryWordOfZeroAsUnread) {
  PanelBench bench(sim::Family::KeldPlus);
  bench.StartUp();
  sim::Measurements applied = bench.sim.gauge->AppliedMeasurements();
  applied.batteryMv = 0;
  bench.sim.gauge->ApplyMeasurements(applied);
  bench.panel.chkUpdates.Value = 1;
  bench.panel.tmrScan_Timer();
  EXPECT_EQ(bench.panel.txtBatMeasured.Text, "Err_Rd");
  EXPECT_NE(bench.panel.txtPackMeasured.Text, "Err_Rd");
}

TEST(LiveScanRefresh, AFailedDataflashReadKeepsTheTableAndStartsTheScan) {
  // QUILL's gauge is gone; MORLIN's first row read fails, which its read does not report.
  for (const sim::Family family : {sim::Family::Quill, sim::Family::Morlin}) {
    SCOPED_TRACE(Name(family));
    PanelBench bench(family);
    bench.StartUp();
    const std::string before = bench.panel.DFGrid.Cell(3, 1).Text;
    bench.sim.gauge->SetDataflashBytes(0, std::vector<std::uint8_t>(32, 0x11));
    if (family == sim::Family::Quill) {
      bench.sim.gauge->SetDisconnected(true);
    } else {
      bench.sim.gauge->FailNext(sim::Transfer::BlockRead, 1);
    }
    bench.panel.ReadandUpdateAllDFValues();
    EXPECT_TRUE(
        MatchesTrace(bench.Trace(), "panel/read-and-update-all-df-values-failed-" + Name(family)));
    EXPECT_EQ(bench.panel.DFGrid.Cell(3, 1).Text, before);
  }
}

}  // namespace
}  // namespace ombrelay
