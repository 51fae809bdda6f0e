#include <gtest/gtest.h>

#include "panel/nbcal.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"
#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

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

struct Shown {
  std::string text;
  MessageStyle style;
  bool operator==(const Shown&) const = default;
};

std::vector<Shown> Boxes(const SimBench& bench) {
  std::vector<Shown> shown;
  for (const auto& message : bench.platform.Messages()) shown.push_back({message.text, message.style});
  return shown;
}

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
  EXPECT_EQ(Boxes(bench), expected);
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
  EXPECT_EQ(Boxes(bench), expected);
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
  EXPECT_EQ(Boxes(bench), expected);
}

TEST(Startup, AGaugeThatOverstatesItsChargeIsReportedButStartupGoesOn) {
  SimBench bench(sim::Family::Morlin);
  bench.gauge->SetWord(0x0D, 101);
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();

  const std::vector<Shown> expected = {{kNoDevice, MessageStyle::Error}};
  EXPECT_EQ(Boxes(bench), expected);
  EXPECT_EQ(g_sDeviceNumber, "4D31");
}

class SampleGaugeStartup : public ::testing::TestWithParam<sim::Family> {};

TEST_P(SampleGaugeStartup, IdentifiesAndConfiguresWithoutAWord) {
  SimBench bench(GetParam());
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();

  EXPECT_TRUE(bench.MessageTexts().empty()) << bench.MessageTexts().front();
  EXPECT_FALSE(g_sDeviceNumber.empty());
  EXPECT_NE(g_sDataFlashMapPath, "NG");
  ExpectButtonsEnabled(panel, true);
  EXPECT_EQ(panel.txtVersion.Caption.rfind("Version: ", 0), 0U);
  EXPECT_TRUE(panel.txtVersion.Caption.ends_with(" Tarvex Ombrelay"));
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, SampleGaugeStartup,
                         ::testing::Values(sim::Family::Keld, sim::Family::Quill,
                                           sim::Family::Morlin, sim::Family::KeldPlus),
                         [](const auto& param_info) {
                           return std::string(sim::FamilyName(param_info.param));
                         });

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
