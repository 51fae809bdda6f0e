#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "panel/nbcal.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"
#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using testing::Boxes;
using testing::Shown;
using testing::SimBench;
using testing::TempAppDir;

std::vector<std::string> Column(const Grid& grid, int col) {
  std::vector<std::string> texts;
  for (int row = 0; row < grid.Rows(); ++row)
    texts.push_back(grid.Cell(row, col).Text);
  return texts;
}

TEST(DataGrids, MorlinShowsItsBlocksAndItsCalibrationRecord) {
  SimBench bench(sim::Family::Morlin);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();
  ASSERT_TRUE(bench.MessageTexts().empty()) << bench.MessageTexts().front();

  // No third sensor on the sample: its two slots show the cell and FET temperatures.
  const std::vector<std::string> names = {
      "Parameter",      "Voltages",        "Cell Voltage 1", "Cell Voltage 2", "Cell Voltage 3",
      "Cell Voltage 4", "Battery Voltage", "Pack Voltage",   "Temperatures",   "Internal Temp",
      "TS1 Temp",       "TS2 Temp",        "Cell Temp",      "FET Temp"};
  EXPECT_TRUE(panel.displaygrid.Visible);
  EXPECT_EQ(Column(panel.displaygrid, 0), names);
  EXPECT_TRUE(panel.displaygrid.Cell(8, 0).Bold);
  EXPECT_EQ(panel.displaygrid.Cell(8, 1).Text, "----");
  EXPECT_EQ(g_atMODBlocks[1].atFields[4].iGridRow, 13);
  EXPECT_EQ(panel.displaygrid.Height, 255 * 14 - 125);

  // Record 0 without the TS3 and TS4 offsets: 14 parameters, the heading and an empty row.
  EXPECT_TRUE(panel.DFGrid.Visible);
  EXPECT_EQ(panel.DFGrid.Top, 5500);
  EXPECT_EQ(panel.lblCalDF.Top, 5000);
  ASSERT_EQ(panel.DFGrid.Rows(), 16);
  EXPECT_EQ(panel.DFGrid.Cell(1, 0).Text, "Cell Scale 0");
  EXPECT_EQ(panel.DFGrid.Cell(14, 0).Text, "Ext 2 Temp Offset");
  EXPECT_EQ(panel.DFGrid.Cell(15, 0).Text, "");
  // The values are the gauge's, read at start-up, not the table's factory values.
  EXPECT_EQ(panel.DFGrid.Cell(1, 1).Text, g_atCalParameters[0].atFields[0].sValue);
  EXPECT_NE(panel.DFGrid.Cell(1, 1).Text, "20451");
}

TEST(DataGrids, KeldShowsOnlyItsDataGridAndCallsItsSensorExternal) {
  SimBench bench(sim::Family::Keld);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();
  EXPECT_FALSE(panel.displaygrid.Visible);
  EXPECT_EQ(panel.DFGrid.Top, 2500);
  // Record 1 has 11 parameters in the grid; the sixteenth slot is empty and adds no row.
  EXPECT_EQ(panel.DFGrid.Rows(), 13);
  EXPECT_EQ(panel.DFGrid.Cell(6, 0).Text, "Board Offset");
  EXPECT_EQ(panel.chkTemp[1].Caption, "External Temperature");
}

TEST(DataGrids, TheSensorsAndCellsOfTheConfigurationShapeThePage) {
  TempAppDir appdir;
  appdir.Write("config.ini",
               "[D4D31]\nDFType=MORLIN\nMorlinSystemConfigLocation=Configuration,Registers,"
               "Operation Cfg A\nInternalTSandTS1only=1\nTS2Supported=0\nPackVSupported=0\n");
  SimBench bench(sim::Family::Morlin, appdir.Path().string());
  // Operation Cfg A's second byte: two cells.
  bench.gauge->SetDataflashBytes(321, std::vector<std::uint8_t>{0x21});
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();
  ASSERT_TRUE(bench.MessageTexts().empty()) << bench.MessageTexts().front();

  EXPECT_EQ(panel.displaygrid.Rows(), 12);
  EXPECT_EQ(panel.displaygrid.Cell(10, 0).Text, "TS1 Temp");
  EXPECT_EQ(panel.displaygrid.Cell(11, 0).Text, "");
  EXPECT_FALSE(panel.txtBatVoltageActual.Visible);
  EXPECT_FALSE(panel.frmPackCal.Visible);
  EXPECT_FALSE(panel.chkTemp[2].Visible || panel.txtMeasTemp[2].Visible);
  EXPECT_TRUE(panel.chkTemp[0].Visible && panel.chkTemp[1].Visible);
  EXPECT_EQ(panel.frmPackCal.Top, 2400);
  // Two cells: rows 2 and 3 stay on the screen, not for entry.
  EXPECT_TRUE(panel.txtVoltage[1].Enabled);
  EXPECT_TRUE(panel.txtVoltage[2].Visible && panel.txtVoltage[3].Visible);
  EXPECT_FALSE(panel.txtVoltage[2].Enabled || panel.txtCalMeasVoltage[2].Enabled ||
               panel.txtVoltage[3].Enabled);
  EXPECT_EQ(panel.txtCellCount.Text, "2");
}

TEST(DataGrids, TheDataGridTakesTheOffsetsOfTheSensorsThereAreAndTrimsItsHeightByFamily) {
  // KELD_PLUS with a third sensor and no fourth: TS3's offset joins the grid, TS4's does not.
  TempAppDir appdir;
  appdir.Write("config.ini",
               "[D4B60]\nDFType=KELD_PLUS\nMorlinSystemConfigLocation=Configuration,Registers,"
               "Operation Cfg A\nBatteryVSupported=1\nTS3Supported=1\nPackVoltageReadCommand="
               "SBS,90\nTS1readTemperature=SBS,72\nTS2readTemperature=SBS,73\n");
  SimBench bench(sim::Family::KeldPlus, appdir.Path().string());
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();
  ASSERT_EQ(panel.DFGrid.Rows(), 17);
  EXPECT_EQ(panel.DFGrid.Cell(15, 0).Text, "Ext 3 Temp Offset");
  EXPECT_EQ(panel.DFGrid.Cell(16, 0).Text, "");
  EXPECT_EQ(panel.DFGrid.Height, 255 * 16 - 50);

  SimBench quill(sim::Family::Quill);
  NBCal quillPanel(quill.host, quill.platform);
  quillPanel.UserControl_Show();
  ASSERT_EQ(quillPanel.DFGrid.Rows(), 14);
  EXPECT_EQ(quillPanel.DFGrid.Height, 255 * 13 - 100);
}

// A MORLIN section that stops before it can trim the temperature block leaves seven
// temperatures for a grid sized without a third sensor: the grid reports the block it could not
// hold, and start-up goes on.
TEST(DataGrids, ABlockTheGridCannotHoldIsReported) {
  TempAppDir appdir;
  appdir.Write("config.ini", "[D4D31]\nDFType=MORLIN\nBatteryVSupported=1\n");
  SimBench bench(sim::Family::Morlin, appdir.Path().string());
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();
  const std::vector<Shown> expected = {
      {"Location of base System Configuration address name not found. Check entry in Quvara "
       "application directory in file config.ini.",
       MessageStyle::Plain},
      {"Error adding block of MOD data to Grid number  1.", MessageStyle::Plain}};
  std::vector<Shown> shown = Boxes(bench.platform);
  ASSERT_GE(shown.size(), 2U);
  shown.resize(2);
  EXPECT_EQ(shown, expected);
  EXPECT_EQ(panel.displaygrid.Height, 255 * 14 - 125) << "the procedure goes on";
}

// The host may build the grids itself; what they cannot hold ends the procedure with a box.
TEST(DataGrids, TheHostsCallsReportWhatTheGridsCannotHold) {
  SimBench bench(sim::Family::Morlin);
  NBCal panel(bench.host, bench.platform);
  panel.InitGrid(1000, 10000, 0);
  EXPECT_EQ(panel.AddMODBlocktoGrid(1, 5), 0);
  panel.InitDFGrid(2500, 10000, 3);
  const std::vector<Shown> expected = {
      {"Error creating grid 0.", MessageStyle::Plain},
      {"Error adding block of MOD data to Grid number  5.", MessageStyle::Plain},
      {"Error initializing Data Flash Grid.", MessageStyle::Plain}};
  EXPECT_EQ(Boxes(bench.platform), expected);
}

}  // namespace
}  // namespace ombrelay
