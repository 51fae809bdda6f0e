#include "panel/calibration_controls.h"

#include <string>

namespace ombrelay {
namespace {

constexpr int kEntryLength = 5;
constexpr std::int32_t kScanIntervalMs = 2000;

void MakeEntry(TextBox& box, const std::string& text, int maxLength = kEntryLength) {
  box.Text = text;
  box.MaxLength = maxLength;
}

void MakeReadOnly(TextBox& box) {
  box.Locked = true;
}

// A column heading, centred over the boxes under it.
void MakeHeading(Label& heading, const char* caption) {
  heading.Caption = caption;
  heading.Alignment = TextAlignment::Centre;
}

}  // namespace

CalibrationControls::CalibrationControls() {
  SStabCal.TabCaptions = {"Voltage and Temperature", "Current"};
  chkUpdates.Caption = "Check for continuous updates.";
  tmrScan.SetInterval(kScanIntervalMs);
  for (Label& warning : lblScanWarning) {
    warning.Caption = "Please ensure that scanning/communication is off on all other open windows.";
  }

  frmVoltTemp.Caption = "Voltage and Temperature Calibration";
  lblHelp[0].Caption =
      "Ensure voltage reference is stable. Calibration with cells connected is not recommended "
      "unless cells are in a state of rest. If using resistors simulating cells, series "
      "resistance must be less than 300 ohms.  Configured number of cells in Dataflash available "
      "for calibration only. Battery voltage is usually top stack voltage. ";
  lblHelp[1].Caption = "Ensure that no load current is flowing.";
  lblHelp[2].Caption = "Ensure that no load current is flowing.";
  chkVoltageCal.Caption = "Voltage Calibration";
  const std::array<const char*, 4> rows = {"Cell 1", "Cell 1 + 2", "Cell 1 + 2 + 3",
                                           "Cell 1 + 2 + 3 + 4"};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    Label1[i].Caption = rows[i];
    MakeEntry(txtVoltage[i], std::to_string(4000 * (i + 1)));
    MakeReadOnly(txtCalMeasVoltage[i]);
  }
  MakeHeading(lblVoltageEnteredHeading, "Enter actual voltage");
  MakeHeading(lblVoltageMeasuredHeading, "Measured voltage");
  for (const int unit : {19, 22, 26})
    lblCalibration[unit].Caption = "mV";
  lblBatVoltage[4].Caption = "Battery Voltage";
  lblCalibrationBat.Caption = "mV";
  MakeEntry(txtBatVoltageActual, "");
  MakeReadOnly(txtBatMeasured);
  lblCellCountHeading.Caption = "Cell Count";
  txtCellCount.Text = "3";
  MakeReadOnly(txtCellCount);

  Frame1.Caption = "Temperature";
  const std::array<const char*, 5> sensors = {"Internal Temp", "Ext 1 Temp", "Ext 2 Temp",
                                              "Ext 3 Temp", "Ext 4 Temp"};
  for (std::size_t i = 0; i < sensors.size(); ++i) {
    chkTemp[i].Caption = sensors[i];
    MakeEntry(txtActualTemp[i], "");
    MakeReadOnly(txtMeasTemp[i]);
  }
  for (Label& unit : lbldegCmeasured)
    unit.Caption = "degC";
  MakeHeading(lblTempEnteredHeading, "Enter actual temperature");
  MakeHeading(lblTempMeasuredHeading, "Measured temperature");

  btnCalibrate.Caption = "Calibrate &Voltage and Temperature as indicated below";
  btnCalibrate.ToolTipText = "Enter measured values and check cal to perform.";
  btncalpg1.Caption = "Continue calibrations on second page";

  frmPackCal.Caption = "Pack Calibration";
  MakeReadOnly(txtPackMeasured);
  MakeEntry(txtPackActualVoltage, "12000", 0);
  txtPackActualVoltage.ToolTipText = "Enter actual voltage.";
  MakeHeading(lblPackMeasuredHeading, "Measured voltage");
  MakeHeading(lblPackEnteredHeading, "Enter actual voltage");
  btnPackVoltage.Caption = "&Calibrate Pack Voltage";

  btncalpage2.Caption = "Back to first page";
  btncalpage2.ToolTipText = "Go to first page. ";
  frmCCOffset.Caption = "Coulomb Counter Offset Calibration";
  btnCalCCCounter.Caption = "&Calibrate Coulomb Counter";
  btnCalCCCounter.ToolTipText = "Ensure no load current is flowing.";
  frmBoardOffset.Caption = "Board Offset Calibration";
  btnBoardOffset.Caption = "Calibrate &Board Offset";
  frmCurrentCal.Caption = "Pack Current Calibration";
  MakeReadOnly(txtMeasuredCurrent);
  MakeEntry(txtActualCurrent, "-2000");
  MakeHeading(lblCurrentMeasuredHeading, "Measured current");
  MakeHeading(lblCurrentEnteredHeading, "Enter actual current ");
  lblCurrentCal.Caption =
      "Apply a 2 Ampere discharge load. Discharge current is a negative value.  Charge current is "
      "positive.   A voltage applied between Cell ground and Pack- will force current through "
      "sense resistor.  ";
  btnPackCurrent.Caption = "Calibrate &Pack Current";

  lblCurrentValues.Caption = "Current Values";
  lblCurrentValues.Visible = false;
  displaygrid.Visible = false;
  lblCalDF.Caption = "Raw Calibration Dataflash Values";
  DFGrid.Visible = false;

  // Done-marks show only after a calibration has succeeded.
  for (Picture* mark :
       {&imgCalDoneBox, &imgPackVoltage, &imageCCOffsetDone, &ImgBoardOffset, &ImgPackCurrent}) {
    mark->Visible = false;
  }
}

}  // namespace ombrelay
