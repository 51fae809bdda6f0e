// Start-up on every Show: the whole sequence on each sample gauge, a second Show after a
// calibration, and each way it ends early.

#include <gtest/gtest.h>

#include "shell/shared_state.h"
#include "tests/support/expected_trace.h"
#include "tests/support/panel_bench.h"
#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using testing::Boxes;
using testing::MatchesTrace;
using testing::Name;
using testing::PanelBench;
using testing::Shown;
using testing::TempAppDir;

constexpr const char* kNotConfigured =
    "Could not find Quvara configured version for connected Firmware or key configuration "
    "incorrect in application directory in file config.ini.";

struct SampleStartup {
  sim::Family family;
  std::string cells;
  std::string packVoltage;
  std::string batteryVoltage;  // empty where the gauge has no battery input
};

class SampleGaugeStartup : public ::testing::TestWithParam<SampleStartup> {};

TEST_P(SampleGaugeStartup, RunsTheWholeSequenceAndFillsThePage) {
  PanelBench bench(GetParam().family);
  bench.panel.UserControl_Show();

  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/startup-" + Name(GetParam().family)));
  EXPECT_EQ(bench.panel.txtCellCount.Text, GetParam().cells);
  EXPECT_EQ(bench.panel.txtPackActualVoltage.Text, GetParam().packVoltage);
  EXPECT_EQ(bench.panel.txtBatVoltageActual.Text, GetParam().batteryVoltage);
  EXPECT_EQ(g_iCCOffsetSamples, 64);
  EXPECT_TRUE(bench.panel.DFGrid.Visible);
}

INSTANTIATE_TEST_SUITE_P(
    EveryFamily, SampleGaugeStartup,
    ::testing::Values(SampleStartup{sim::Family::Keld, "4", "16000", ""},
                      SampleStartup{sim::Family::Quill, "3", "12000", ""},
                      SampleStartup{sim::Family::Morlin, "3", "12000", "12000"},
                      SampleStartup{sim::Family::KeldPlus, "4", "16000", "16000"}),
    [](const auto& sample) { return Name(sample.param.family); });

// The exit words of the sealed check and of the late step go out only now, with g_bInCalMode
// True; the address the host set is forgotten.
class StartupAfterCalibration : public ::testing::TestWithParam<sim::Family> {};

TEST_P(StartupAfterCalibration, LeavesCalibrationModeAndRunsItAllAgain) {
  PanelBench bench(GetParam());
  bench.ReadyToCalibrate();
  bench.panel.btnCalibrate_Click();
  ASSERT_TRUE(g_bInCalMode && bench.panel.imgCalDoneBox.Visible);
  bench.sim.Restart();
  bench.panel.SetTargetAddress(0x0B);
  bench.panel.UserControl_Show();

  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/startup-again-" + Name(GetParam())));
  EXPECT_EQ(bench.panel.TargetAddress(), 23);
}

INSTANTIATE_TEST_SUITE_P(RowFamilies, StartupAfterCalibration,
                         ::testing::Values(sim::Family::Morlin, sim::Family::KeldPlus),
                         testing::FamilyTestName);

TEST(Startup, WithoutAGaugeReportsEachFailureAndStaysUp) {
  PanelBench bench(std::nullopt);
  // As a calibration under way leaves them: the layout gives the buttons back, not the boxes.
  bench.panel.DisableCalibrationControls();
  bench.sim.Restart();
  bench.panel.UserControl_Show();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/startup-no-gauge"));
  EXPECT_FALSE(bench.panel.DFGrid.Visible);
}

TEST(Startup, AnOverstatedChargeIsReportedButStartupGoesOn) {
  PanelBench bench(sim::Family::Morlin);
  bench.sim.gauge->SetWord(0x0D, 101);
  bench.panel.UserControl_Show();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/startup-overstated-charge-morlin"));
}

TEST(Startup, ASealedMorlinStopsAtTheSealedCheck) {
  PanelBench bench(sim::Family::Morlin);
  bench.sim.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  bench.panel.UserControl_Show();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/startup-sealed-morlin"));
  EXPECT_TRUE(bench.panel.DFGrid.Visible && bench.panel.displaygrid.Visible);

  // Only MORLIN looks: a sealed KELD_PLUS goes on, and its dataflash then refuses the cell count.
  PanelBench other(sim::Family::KeldPlus);
  other.sim.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  other.panel.UserControl_Show();
  EXPECT_EQ(other.sim.MessageTexts().back(),
            "Unable to determine number of cells in use. Please check communications with "
            "device.");
}

TEST(Startup, AMorlinLeftInCalibrationModeMustAcknowledgeTheExit) {
  PanelBench bench(sim::Family::Morlin);
  g_bInCalMode = true;  // as an earlier calibration in this session leaves it
  // Once the gauge has told its security mode, the next word write is lost.
  bench.sim.After(testing::OnCommand(0x23), 1,
                  [&bench] { bench.sim.gauge->FailNext(sim::Transfer::WordWrite, 1); });
  bench.panel.UserControl_Show();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/startup-failed-exit-morlin"));
}

TEST(Startup, ACellCountThatCannotBeReadEndsStartupWithTheScanOn) {
  PanelBench bench(sim::Family::Morlin);
  // Operation Cfg A of the sample map at 320; MORLIN takes its second byte. Bits 00: no count.
  bench.sim.gauge->SetDataflashBytes(321, std::vector<std::uint8_t>{0x20});
  bench.panel.txtPackActualVoltage.Text = "untouched";
  bench.panel.UserControl_Show();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/startup-no-cell-count-morlin"));
  EXPECT_EQ(bench.panel.txtPackActualVoltage.Text, "untouched");
}

TEST(Startup, WithoutConfigIniSaysSoInBothWords) {
  TempAppDir appdir;
  appdir.Remove("config.ini");
  PanelBench bench(sim::Family::Morlin, appdir.Path().string());
  bench.panel.UserControl_Show();

  const std::vector<Shown> expected = {
      {"config.ini file does not exist in application directory. Please check installation. Do "
       "not proceed with calibration.",
       MessageStyle::Error},
      {kNotConfigured, MessageStyle::Plain}};
  EXPECT_EQ(Boxes(bench.sim.platform), expected);
  EXPECT_TRUE(bench.panel.btnCalibrate.Enabled);
}

TEST(Startup, WithoutAMatchingSectionNamesTheFile) {
  TempAppDir appdir;
  appdir.Write("config.ini", "[D4D31_9_99]\nDFType=MORLIN\n[D4D31]\n");
  PanelBench bench(sim::Family::Morlin, appdir.Path().string());
  bench.panel.UserControl_Show();

  const std::string path = appdir.Path().string() + "/config.ini";
  const std::vector<Shown> expected = {
      {"A section name matching device and firmware version was not found in configuration file " +
           path + ". Please obtain Quvara that supports this Firmware.",
       MessageStyle::Plain},
      {kNotConfigured, MessageStyle::Plain}};
  EXPECT_EQ(Boxes(bench.sim.platform), expected);
}

TEST(Startup, TheUpdateBoxIsSavedWhileTheFocusIsAway) {
  PanelBench bench(sim::Family::Keld);
  NBCal& panel = bench.panel;
  panel.chkUpdates.Value = 1;
  panel.UserControl_ExitFocus();
  EXPECT_EQ(panel.chkUpdates.Value, 0);
  panel.UserControl_EnterFocus();
  EXPECT_EQ(panel.chkUpdates.Value, 1);

  panel.UserControl_Show();  // start-up forgets what was saved
  panel.UserControl_EnterFocus();
  EXPECT_EQ(panel.chkUpdates.Value, 0);
}

}  // namespace
}  // namespace ombrelay
