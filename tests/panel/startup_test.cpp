#include <gtest/gtest.h>

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

constexpr const char* kNoDevice =
    "Unable to communicate with device.  Please ensure device is connected. After communications "
    "is established, close and restart Quvara.  Device will auto detect properly on startup.";
constexpr const char* kNoTarget =
    "Data Flash Configuration not found in Quvara installation. Please obtain a version of Quvara "
    "that supports this device and Firmware version. Using this tool on an unsupported device may "
    "destroy it.";
constexpr const char* kMissingInformation =
    "Please do not use this tool for calibration. Some configuration information is missing to "
    "calibrate this device.";
constexpr const char* kNotConfigured =
    "Could not find Quvara configured version for connected Firmware or key configuration "
    "incorrect in application directory in file config.ini.";

void ExpectButtonsEnabled(const NBCal& panel, bool enabled) {
  for (const Button* button : {&panel.btnCalCCCounter, &panel.btnCalibrate, &panel.btnPackVoltage,
                               &panel.btnBoardOffset, &panel.btnPackCurrent}) {
    EXPECT_EQ(button->Enabled, enabled) << button->Caption;
  }
}

TEST(Startup, WithoutAGaugeReportsEachFailureAndStaysUp) {
  SimBench bench(std::nullopt);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();

  const std::vector<Shown> expected = {{kNoDevice, MessageStyle::Error},
                                       {kNoTarget, MessageStyle::Error},
                                       {kMissingInformation, MessageStyle::Error}};
  EXPECT_EQ(Boxes(bench.platform), expected);
  ExpectButtonsEnabled(panel, true);
  EXPECT_FALSE(panel.DFGrid.Visible);
  EXPECT_FALSE(panel.tmrScan.Enabled());
  EXPECT_TRUE(g_sDeviceNumber.empty());
}

TEST(Startup, WithoutConfigIniSaysSoInBothWords) {
  TempAppDir appdir;
  appdir.Remove("config.ini");
  SimBench bench(sim::Family::Morlin, appdir.Path().string());
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();

  const std::vector<Shown> expected = {
      {"config.ini file does not exist in application directory. Please check installation. Do "
       "not proceed with calibration.",
       MessageStyle::Error},
      {kNotConfigured, MessageStyle::Plain}};
  EXPECT_EQ(Boxes(bench.platform), expected);
  ExpectButtonsEnabled(panel, true);
}

TEST(Startup, WithoutAMatchingSectionNamesTheFile) {
  TempAppDir appdir;
  appdir.Write("config.ini", "[D4D31_9_99]\nDFType=MORLIN\n[D4D31]\n");
  SimBench bench(sim::Family::Morlin, appdir.Path().string());
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();

  const std::string path = appdir.Path().string() + "/config.ini";
  const std::vector<Shown> expected = {
      {"A section name matching device and firmware version was not found in configuration file " +
           path + ". Please obtain Quvara that supports this Firmware.",
       MessageStyle::Plain},
      {kNotConfigured, MessageStyle::Plain}};
  EXPECT_EQ(Boxes(bench.platform), expected);
}

TEST(Startup, AGaugeThatOverstatesItsChargeIsReportedButStartupGoesOn) {
  SimBench bench(sim::Family::Morlin);
  bench.gauge->SetWord(0x0D, 101);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();

  const std::vector<Shown> expected = {{kNoDevice, MessageStyle::Error}};
  EXPECT_EQ(Boxes(bench.platform), expected);
  EXPECT_EQ(g_sDeviceNumber, "4D31");
}

struct SampleStartup {
  sim::Family family;
  std::string cells;
  std::string packVoltage;
  std::string batteryVoltage;  // empty where the gauge has no battery input
};

class SampleGaugeStartup : public ::testing::TestWithParam<SampleStartup> {};

TEST_P(SampleGaugeStartup, RunsThroughTheCellCountWithoutAWord) {
  SimBench bench(GetParam().family);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();

  EXPECT_TRUE(bench.MessageTexts().empty()) << bench.MessageTexts().front();
  EXPECT_NE(g_sDataFlashMapPath, "NG");
  ExpectButtonsEnabled(panel, true);
  EXPECT_EQ(panel.txtCellCount.Text, GetParam().cells);
  EXPECT_EQ(panel.txtPackActualVoltage.Text, GetParam().packVoltage);
  EXPECT_EQ(panel.txtBatVoltageActual.Text, GetParam().batteryVoltage);
  EXPECT_EQ(g_iCCOffsetSamples, 64);
  EXPECT_EQ(panel.txtVersion.Caption.rfind("Version: ", 0), 0U);
  EXPECT_TRUE(panel.txtVersion.Caption.ends_with(" Tarvex Ombrelay"));
}

INSTANTIATE_TEST_SUITE_P(
    EveryFamily, SampleGaugeStartup,
    ::testing::Values(SampleStartup{sim::Family::Keld, "4", "16000", ""},
                      SampleStartup{sim::Family::Quill, "3", "12000", ""},
                      SampleStartup{sim::Family::Morlin, "3", "12000", "12000"},
                      SampleStartup{sim::Family::KeldPlus, "4", "16000", "16000"}),
    [](const auto& param_info) { return std::string(sim::FamilyName(param_info.param.family)); });

constexpr const char* kSealed =
    "Pack is sealed. Please unseal device before performing calibration. Close and restart "
    "Quvara after unsealing so device and firmware version is detected correctly.";

TEST(Startup, ASealedMorlinStopsBeforeTheCellCount) {
  SimBench bench(sim::Family::Morlin);
  bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  NBCal panel(bench.host, bench.platform);
  panel.txtCellCount.Text = "untouched";
  panel.UserControl_Show();

  EXPECT_EQ(Boxes(bench.platform), (std::vector<Shown>{{kSealed, MessageStyle::Plain}}));
  ExpectButtonsEnabled(panel, true);
  EXPECT_EQ(panel.txtCellCount.Text, "untouched");
  for (const BusOperation& operation : bench.OperationsNamed("WriteSMBusWord_")) {
    EXPECT_LT(operation.word, 0x0100) << "no dataflash row was requested";
  }

  // Only MORLIN looks: a sealed KELD_PLUS goes on, and its dataflash then refuses the cell count.
  SimBench other(sim::Family::KeldPlus);
  other.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  NBCal otherPanel(other.host, other.platform);
  otherPanel.UserControl_Show();
  EXPECT_EQ(other.MessageTexts().back(),
            "Unable to determine number of cells in use. Please check communications with "
            "device.");
}

TEST(Startup, AMorlinLeftInCalibrationModeMustLeaveIt) {
  SimBench bench(sim::Family::Morlin);
  g_bInCalMode = true;  // as an earlier calibration in this session leaves it
  // The gauge goes away once it has told its security mode.
  bench.afterOperation = [&bench](const BusOperation& operation) {
    if (operation.op == "ReadSMBusBlock_" && operation.cmd == 0x23) {
      bench.gauge->SetDisconnected(true);
    }
  };
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();

  EXPECT_EQ(Boxes(bench.platform).back(),
            (Shown{"Unable to confirm device is executing firmware. Please check communications. "
                   "Close and restart Quvara after communications is established.",
                   MessageStyle::Plain}));
  ExpectButtonsEnabled(panel, true);
}

TEST(Startup, ACellCountThatCannotBeReadEndsStartup) {
  SimBench bench(sim::Family::Morlin);
  // Operation Cfg A of the sample map at 320; MORLIN takes its second byte. Bits 00: no count.
  bench.gauge->SetDataflashBytes(321, std::vector<std::uint8_t>{0x20});
  NBCal panel(bench.host, bench.platform);
  panel.txtPackActualVoltage.Text = "untouched";
  panel.UserControl_Show();

  EXPECT_EQ(Boxes(bench.platform),
            (std::vector<Shown>{{"Unable to determine number of cells in use. Please check "
                                 "communications with device.",
                                 MessageStyle::Plain}}));
  ExpectButtonsEnabled(panel, true);
  EXPECT_EQ(panel.txtPackActualVoltage.Text, "untouched");
}

TEST(Startup, EveryShowRunsItAllAgainAndTheAddressIsAlways23) {
  SimBench bench(sim::Family::Keld);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();
  const auto firstRun = bench.host.Operations().size();

  panel.SetTargetAddress(0x0B);
  EXPECT_EQ(panel.TargetAddress(), 0x0B);
  panel.UserControl_Show();

  EXPECT_EQ(bench.host.Operations().size(), 2 * firstRun);
  EXPECT_EQ(panel.TargetAddress(), 23);
  EXPECT_EQ(g_iTargetAddress, 23);
}

TEST(Startup, TheUpdateBoxIsSavedWhileTheFocusIsAway) {
  SimBench bench(sim::Family::Keld);
  NBCal panel(bench.host, bench.platform);
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
