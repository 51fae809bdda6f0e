// The checks of the voltage and temperature page, in their order: each refuses with its own
// box, sends nothing to the gauge beyond the cell count's reads, and hands the controls back
// after the box. Where two fail at once, the earlier one speaks.

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

using Entry = std::function<void(PanelBench&)>;

// A started MORLIN panel with every entry plausible: three cells, battery input, internal sensor.
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

Entry Text(TextBox NBCal::*box, std::string text) {
  return [box, text](PanelBench& bench) { (bench.panel.*box).Text = text; };
}
Entry Row(std::array<TextBox, 4> NBCal::*boxes, std::size_t row, std::string text) {
  return [boxes, row, text](PanelBench& bench) { (bench.panel.*boxes)[row].Text = text; };
}
Entry Sensor(std::array<TextBox, 5> NBCal::*boxes, std::size_t row, std::string text) {
  return [boxes, row, text](PanelBench& bench) { (bench.panel.*boxes)[row].Text = text; };
}

// Each check failing alone, in the order of the checks; the name is that of its trace.
struct Check {
  const char* name;
  Entry entry;
};
const std::vector<Check>& Checks() {
  static const std::vector<Check> checks = {
      {"nothing-ticked",
       [](PanelBench& bench) {
         bench.panel.chkVoltageCal.Value = 0;
         bench.panel.chkTemp[0].Value = 0;
       }},
      // Operation Cfg A's second byte with no cell count.
      {"cell-count-unread",
       [](PanelBench& bench) {
         bench.sim.gauge->SetDataflashBytes(321, std::vector<std::uint8_t>{0x20});
       }},
      {"voltage-missing", Row(&NBCal::txtVoltage, 1, "")},
      {"measured-low", Row(&NBCal::txtCalMeasVoltage, 1, "1999")},
      {"entered-low", Row(&NBCal::txtVoltage, 2, "8396")},
      {"entered-high", Row(&NBCal::txtVoltage, 0, "4501")},
      {"battery-unread", Text(&NBCal::txtBatMeasured, "Err_Rd")},
      {"battery-high", Text(&NBCal::txtBatVoltageActual, "18001")},
      {"battery-low", Text(&NBCal::txtBatVoltageActual, "3999")},
      {"temperature-missing", Sensor(&NBCal::txtActualTemp, 0, "")},
      {"temperature-unread", Sensor(&NBCal::txtMeasTemp, 0, "Err_Rd")},
      {"temperature-high", Sensor(&NBCal::txtActualTemp, 0, "85.1")},
      {"temperature-low", Sensor(&NBCal::txtActualTemp, 0, "-0.1")},
      {"temperature-far", Sensor(&NBCal::txtActualTemp, 0, "48.1")},
      {"not-a-number", Row(&NBCal::txtVoltage, 3, "4k")},
  };
  return checks;
}

// Two entries that fail together, and the check whose box must win.
struct Pair {
  const char* winner;
  Entry first;
  Entry second;
};
const std::vector<Pair>& Pairs() {
  static const std::vector<Pair> pairs = {
      {"nothing-ticked", Checks()[0].entry, Text(&NBCal::txtBatMeasured, "Err_Rd")},
      {"cell-count-unread", Checks()[1].entry, Row(&NBCal::txtVoltage, 0, "")},
      {"voltage-missing", Row(&NBCal::txtVoltage, 1, ""),
       Row(&NBCal::txtCalMeasVoltage, 1, "Err_Rd")},
      {"measured-low", Row(&NBCal::txtCalMeasVoltage, 1, "1999"),
       Row(&NBCal::txtVoltage, 1, "5597")},
      {"entered-low", Row(&NBCal::txtVoltage, 2, "8396"), Text(&NBCal::txtBatMeasured, "Err_Rd")},
      // A later row's checks, of whatever kind, come after this row's.
      {"entered-high", Row(&NBCal::txtVoltage, 0, "4501"), Row(&NBCal::txtVoltage, 1, "")},
      {"entered-high", Row(&NBCal::txtVoltage, 0, "4501"), Row(&NBCal::txtVoltage, 2, "8396")},
      {"not-a-number", Row(&NBCal::txtVoltage, 3, "4k"), Text(&NBCal::txtBatMeasured, "Err_Rd")},
      {"battery-unread", Text(&NBCal::txtBatMeasured, "Err_Rd"),
       Text(&NBCal::txtBatVoltageActual, "18001")},
      {"battery-high", Text(&NBCal::txtBatVoltageActual, "18001"),
       Sensor(&NBCal::txtActualTemp, 0, "")},
      {"battery-low", Text(&NBCal::txtBatVoltageActual, "3999"),
       Sensor(&NBCal::txtActualTemp, 0, "")},
      {"temperature-missing", Sensor(&NBCal::txtActualTemp, 0, ""),
       Sensor(&NBCal::txtMeasTemp, 0, "Err_Rd")},
      {"temperature-unread", Sensor(&NBCal::txtMeasTemp, 0, "-0.1"),
       Sensor(&NBCal::txtActualTemp, 0, "90")},
      {"temperature-high", Sensor(&NBCal::txtActualTemp, 0, "90"),
       Sensor(&NBCal::txtMeasTemp, 0, "24")},
      {"temperature-low", Sensor(&NBCal::txtActualTemp, 0, "-30"),
       Sensor(&NBCal::txtMeasTemp, 0, "24")},
      // TS1 ticked with no entry comes after the internal sensor's own checks.
      {"temperature-far", Sensor(&NBCal::txtActualTemp, 0, "48.1"),
       [](PanelBench& bench) { bench.panel.chkTemp[1].Value = 1; }},
  };
  return pairs;
}

void Press(PanelBench& bench, const std::vector<Entry>& entries, const std::string& trace) {
  bench.StartUp();
  Plausible(bench.panel);
  for (const Entry& entry : entries)
    entry(bench);
  bench.panel.btnCalibrate_Click();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/calibrate-refused-" + trace + "-morlin"));
  EXPECT_TRUE(bench.panel.tmrScan.Enabled());
}

class CalibrateChecks : public ::testing::TestWithParam<Check> {};

TEST_P(CalibrateChecks, RefuseWithTheirBoxAndLeaveTheGaugeAlone) {
  PanelBench bench(sim::Family::Morlin);
  Press(bench, {GetParam().entry}, GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(InOrder, CalibrateChecks, ::testing::ValuesIn(Checks()),
                         [](const auto& check) { return testing::TestNameOf(check.param.name); });

class CalibrateCheckPairs : public ::testing::TestWithParam<Pair> {};

TEST_P(CalibrateCheckPairs, TheEarlierCheckSpeaks) {
  PanelBench bench(sim::Family::Morlin);
  Press(bench, {GetParam().first, GetParam().second}, GetParam().winner);
}

INSTANTIATE_TEST_SUITE_P(TwoAtOnce, CalibrateCheckPairs, ::testing::ValuesIn(Pairs()),
                         [](const auto& pair) {
                           return std::to_string(pair.index) +
                                  testing::TestNameOf(pair.param.winner);
                         });

TEST(CalibrateChecksEdges, LimitsAreInclusiveAndOnlyConfiguredRowsAreChecked) {
  PanelBench bench(sim::Family::Morlin);
  bench.StartUp();
  Plausible(bench.panel);
  bench.panel.chkUpdates.Value = 1;
  // Three cells: row 3 is never checked, only parsed.
  bench.panel.txtVoltage[3].Text = "1";
  bench.panel.txtVoltage[1].Text = "5598";
  bench.panel.txtVoltage[2].Text = "13500";
  bench.panel.txtCalMeasVoltage[2].Text = "3000";
  bench.panel.txtBatVoltageActual.Text = "19500";  // row top 13500 + 6000
  bench.panel.txtActualTemp[0].Text = "48";        // 24.0 from the measured 24
  bench.sim.gauge->RefuseCalibrationMode(true);    // every check passed: the gauge is asked
  bench.panel.btnCalibrate_Click();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/calibrate-enter-fails-morlin"));
}

TEST(CalibrateChecksEdges, ACellCountChangedSinceStartUpRearrangesThePage) {
  PanelBench bench(sim::Family::Morlin);
  bench.StartUp();  // three cells: row 3 not for entry
  ASSERT_FALSE(bench.panel.txtVoltage[3].Enabled);
  Plausible(bench.panel);
  bench.sim.gauge->SetDataflashBytes(321, std::vector<std::uint8_t>{0x23});  // now four
  bench.panel.txtVoltage[0].Text.clear();  // refused once the count is read
  bench.panel.btnCalibrate_Click();
  EXPECT_EQ(bench.panel.txtCellCount.Text, "4");
  EXPECT_TRUE(bench.panel.txtVoltage[3].Enabled && bench.panel.txtCalMeasVoltage[3].Enabled);
}

}  // namespace
}  // namespace ombrelay
