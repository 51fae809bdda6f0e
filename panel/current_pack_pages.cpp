// The second page and the pack frame of the first: switching pages, and the calibrations of
// pack voltage, current and the two offsets, each with its done mark.

#include <cmath>
#include <string>

#include "calibration/current_pack_calibration.h"
#include "gauge/measurement_reads.h"
#include "panel/nbcal.h"
#include "shell/numeric.h"
#include "shell/platform.h"

namespace ombrelay {
namespace {

constexpr const char* kInvalidValue = "Invalid value entered! Error description:";

void ShowPage(std::array<Picture, 2>& pages, std::size_t shown) {
  pages[shown].Visible = true;
  pages[1 - shown].Visible = false;
}

}  // namespace

void NBCal::btncalpg1_Click() {
  ShowPage(picCalibration, 1);
}

void NBCal::btncalpage2_Click() {
  ShowPage(picCalibration, 0);
}

void NBCal::SStabCal_Click(std::int16_t previousTab) {
  // The tab that was left decides; the buttons do not move the tabs.
  if (previousTab == 0) ShowPage(picCalibration, 1);
  if (previousTab == 1) ShowPage(picCalibration, 0);
}

void NBCal::btnPackVoltage_Click() {
  try {
    imgPackVoltage.Visible = false;
    if (EnterCalibrationMode(0) != 0) {
      ExitCalibrationMode();
      MsgBox("Unable to enter calibration mode. Pack voltage not calibrated.");
      return;
    }
    // The entries are judged only once the gauge has been through calibration mode.
    if (const std::optional<std::string> refusal = CheckPackVoltageEntries()) {
      MsgBox(*refusal);
    } else {
      imgPackVoltage.Visible = CalibratePackVoltage(TextToDouble(txtPackActualVoltage.Text)) == 0;
    }
    ExitCalibrationMode();
  } catch (const RuntimeError& error) {
    MsgBox(kInvalidValue + std::string(error.what()), MessageStyle::Plain, "Calibration");
    EnableCalibrationControls();
  }
}

std::optional<std::string> NBCal::CheckPackVoltageEntries() {
  if (txtPackMeasured.Text == kErrRd) {
    return "A value pack voltage measurement from device is not available. Please retry.";
  }
  if (txtPackActualVoltage.Text.empty()) return "Please enter a value for measured Pack Voltage";
  const double actual = TextToDouble(txtPackActualVoltage.Text);
  if (actual < 4000) return "Pack Voltage entered appears low. Please enter a higher voltage.";
  if (actual > 24000) return "Pack Voltage entered appears high. Please enter a lower voltage.";
  if (TextToDouble(txtPackMeasured.Text) < 3000) {
    return "Pack Voltage measured by gauge is low. Please connect a voltage source to Pack +";
  }
  return std::nullopt;
}

void NBCal::btnPackCurrent_Click() {
  try {
    ImgPackCurrent.Visible = false;
    if (EnterCalibrationMode(0) != 0) {
      MsgBox(
          "Error entering calibration mode executing Current Calibration.  Please check "
          "communications with part.");
      ExitCalibrationMode();
      return;
    }
    // A refusal leaves the gauge in calibration mode and the scan stopped, until the next
    // calibration on the panel has run.
    if (const std::optional<std::string> refusal = CheckCurrentEntries()) {
      MsgBox(*refusal);
      EnableCalibrationControls();
      return;
    }
    ImgPackCurrent.Visible = CalibrateSenseResistor(txtActualCurrent.Text) == 0;
    ExitCalibrationMode();
  } catch (const RuntimeError& error) {
    MsgBox(kInvalidValue + std::string(error.what()));
    EnableCalibrationControls();
  }
}

std::optional<std::string> NBCal::CheckCurrentEntries() {
  if (txtActualCurrent.Text.empty()) {
    return "Actual Current not entered for current calibration. Please enter actual current.";
  }
  if (txtMeasuredCurrent.Text == kErrRd) {
    return "Measured current reading not valid. Please check communication.  Calibration will "
           "be terminated.";
  }
  const double actual = TextToDouble(txtActualCurrent.Text);
  if (actual > 4000 || actual < -4000) {
    return "Actual current entered is out of range. Please check value entered.  Calibration "
           "will be terminated.";
  }
  if (std::fabs(actual) < 0.01) {
    return "Actual Current entered for current calibration is low. Please check value or "
           "increase current.";
  }
  return std::nullopt;
}

void NBCal::btnCalCCCounter_Click() {
  imageCCOffsetDone.Visible = false;
  tmrScan.SetEnabled(false);
  if (EnterCalibrationMode(1) != 0) {
    ExitCalibrationMode();
    tmrScan.SetEnabled(true);
    return;
  }
  imageCCOffsetDone.Visible = CalibrateCCOffset() == 0;
  ExitCalibrationMode();
  tmrScan.SetEnabled(true);
}

void NBCal::btnBoardOffset_Click() {
  ImgBoardOffset.Visible = false;
  if (EnterCalibrationMode(0) != 0) {
    MsgBox("Error entering calibration mode.  Please check communications with device.");
    ExitCalibrationMode();
    return;
  }
  ImgBoardOffset.Visible = CalibrateBoardOffset() == 0;
  ExitCalibrationMode();
}

}  // namespace ombrelay
