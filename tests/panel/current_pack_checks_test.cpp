// The pack and current frames' checks in their order, where two fail at once the earlier one
// speaking; what each refusal leaves behind; the error traps; the page switching.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/panel_bench.h"

namespace ombrelay {
namespace {

using testing::PanelBench;
using testing::Shown;

constexpr const char* kPackLow = "Pack Voltage entered appears low. Please enter a higher voltage.";
constexpr const char* kPackHigh =
    "Pack Voltage entered appears high. Please enter a lower voltage.";
constexpr const char* kPackUnread =
    "A value pack voltage measurement from device is not available. Please retry.";
constexpr const char* kPackEmpty = "Please enter a value for measured Pack Voltage";
constexpr const char* kPackMeasuredLow =
    "Pack Voltage measured by gauge is low. Please connect a voltage source to Pack +";
constexpr const char* kCurrentEmpty =
    "Actual Current not entered for current calibration. Please enter actual current.";
constexpr const char* kCurrentUnread =
    "Measured current reading not valid. Please check communication.  Calibration will be "
    "terminated.";
constexpr const char* kCurrentRange =
    "Actual current entered is out of range. Please check value entered.  Calibration will be "
    "terminated.";
constexpr const char* kCurrentLow =
    "Actual Current entered for current calibration is low. Please check value or increase "
    "current.";

// Entries of a frame and the message they draw; none where every check passes.
struct Case {
  const char* entered;
  const char* measured;
  const char* message;
};

std::vector<Shown> Plain(const char* message) {
  if (message == nullptr) return {};
  return {{message, MessageStyle::Plain}};
}

TEST(PackFrame, ChecksInOrderAfterCalibrationModeAndLeavesItAfterwards) {
  const std::vector<Case> cases = {
      {"", "Err_Rd", kPackUnread},  {"3999", "Err_Rd", kPackUnread},
      {"", "2999", kPackEmpty},     {"3999", "2999", kPackLow},
      {"24001", "2999", kPackHigh}, {"4000", "2999", kPackMeasuredLow},
      {"4000", "3000", nullptr},    {"24000", "3000", nullptr},
      {"12000", "11393", nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.entered) + " / " + c.measured);
    PanelBench bench;
    bench.StartUp();
    bench.panel.txtPackActualVoltage.Text = c.entered;
    bench.panel.txtPackMeasured.Text = c.measured;
    bench.panel.btnPackVoltage_Click();
    EXPECT_EQ(testing::Boxes(bench.sim.platform), Plain(c.message));
    EXPECT_EQ(bench.panel.imgPackVoltage.Visible, c.message == nullptr);
    EXPECT_FALSE(bench.sim.gauge->InCalibrationMode()) << "calibration mode is left either way";
    EXPECT_TRUE(bench.panel.tmrScan.Enabled());
    EXPECT_TRUE(bench.panel.btnPackVoltage.Enabled);
  }
}

TEST(CurrentFrame, ChecksInOrderAndARefusalLeavesTheGaugeInCalibrationMode) {
  const std::vector<Case> cases = {
      {"", "Err_Rd", kCurrentEmpty},    {"5000", "Err_Rd", kCurrentUnread},
      {"0", "Err_Rd", kCurrentUnread},  {"4001", "-512", kCurrentRange},
      {"-4001", "-512", kCurrentRange}, {"0", "-512", kCurrentLow},
      {"-0.009", "-512", kCurrentLow},  {"4000", "-512", nullptr},
      {"-4000", "-512", nullptr},       {"0.01", "-512", nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.entered) + " / " + c.measured);
    PanelBench bench;
    bench.StartUp();
    bench.panel.txtActualCurrent.Text = c.entered;
    bench.panel.txtMeasuredCurrent.Text = c.measured;
    bench.panel.btnPackCurrent_Click();
    EXPECT_EQ(testing::Boxes(bench.sim.platform), Plain(c.message));
    EXPECT_EQ(bench.panel.ImgPackCurrent.Visible, c.message == nullptr);
    const bool refused = c.message != nullptr;
    EXPECT_EQ(bench.sim.gauge->InCalibrationMode(), refused);
    EXPECT_EQ(bench.panel.tmrScan.Enabled(), !refused) << "a refusal leaves the scan stopped";
    EXPECT_TRUE(bench.panel.btnPackCurrent.Enabled);
  }
}

TEST(PackAndCurrentFrames, TrapTextsThatAreNoNumbersEachUnderItsTitle) {
  PanelBench bench;
  bench.StartUp();
  bench.panel.txtPackActualVoltage.Text = "12,000";
  bench.panel.btnPackVoltage_Click();
  bench.panel.txtActualCurrent.Text = "-2 A";
  bench.panel.btnPackCurrent_Click();
  ASSERT_EQ(bench.sim.platform.Messages().size(), 2U);
  for (const RecordedMessage& message : bench.sim.platform.Messages())
    EXPECT_EQ(message.text, "Invalid value entered! Error description:Type mismatch");
  EXPECT_EQ(bench.sim.platform.Messages()[0].title, "Calibration");
  EXPECT_EQ(bench.sim.platform.Messages()[1].title, "");
  // Neither leaves calibration mode nor starts the scan; the controls come back.
  EXPECT_TRUE(bench.sim.gauge->InCalibrationMode());
  EXPECT_FALSE(bench.panel.tmrScan.Enabled());
  EXPECT_TRUE(bench.panel.btnPackCurrent.Enabled);

  // An empty measured pack voltage passes the text check and fails as a number.
  PanelBench empty;
  empty.StartUp();
  empty.panel.txtPackMeasured.Text = "";
  empty.panel.btnPackVoltage_Click();
  EXPECT_EQ(empty.sim.MessageTexts(),
            std::vector<std::string>{"Invalid value entered! Error description:Type mismatch"});
}

// A gauge that will not enter calibration mode: each button's box, and whether calibration mode
// had been left (the scan running again) when the box came.
TEST(CurrentAndPackButtons, TellAFailedEntryBeforeOrAfterLeavingAgain) {
  struct Button {
    void (NBCal::*click)();
    const char* message;  // none: the button shows no box of its own
    bool leftBeforeTheBox;
  };
  const std::vector<Button> cases = {
      {&NBCal::btnPackVoltage_Click,
       "Unable to enter calibration mode. Pack voltage not calibrated.", true},
      {&NBCal::btnPackCurrent_Click,
       "Error entering calibration mode executing Current Calibration.  Please check "
       "communications with part.",
       false},
      {&NBCal::btnBoardOffset_Click,
       "Error entering calibration mode.  Please check communications with device.", false},
      {&NBCal::btnCalCCCounter_Click, nullptr, false},
  };
  for (const Button& c : cases) {
    SCOPED_TRACE(c.message ? c.message : "coulomb counter");
    PanelBench bench;
    bench.StartUp();
    bench.sim.gauge->RefuseCalibrationMode(true);
    std::vector<std::pair<std::string, bool>> boxes;
    bench.sim.platform.onMessage = [&](const RecordedMessage& message) {
      boxes.emplace_back(message.text, bench.panel.tmrScan.Enabled());
    };
    (bench.panel.*c.click)();
    std::vector<std::pair<std::string, bool>> expected = {
        {"Unable to request device to output cal values.", false}};
    if (c.message) expected.emplace_back(c.message, c.leftBeforeTheBox);
    EXPECT_EQ(boxes, expected);
    EXPECT_TRUE(bench.panel.tmrScan.Enabled()) << "calibration mode is left on every path";
  }
}

TEST(CalibrationPages, ButtonsAndTabsSwitchThePages) {
  PanelBench bench;
  NBCal& panel = bench.panel;
  bench.StartUp();
  const auto shown = [&panel] {
    return std::pair(panel.picCalibration[0].Visible, panel.picCalibration[1].Visible);
  };
  panel.btncalpg1_Click();
  EXPECT_EQ(shown(), std::pair(false, true));
  panel.btncalpage2_Click();
  EXPECT_EQ(shown(), std::pair(true, false));
  panel.SStabCal_Click(0);
  EXPECT_EQ(shown(), std::pair(false, true));
  panel.SStabCal_Click(2);
  EXPECT_EQ(shown(), std::pair(false, true)) << "another tab left changes nothing";
  panel.SStabCal_Click(1);
  EXPECT_EQ(shown(), std::pair(true, false));
  EXPECT_EQ(panel.SStabCal.Tab, 0) << "the buttons do not move the tabs";
}

}  // namespace
}  // namespace ombrelay
