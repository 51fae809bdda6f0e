#pragma once
// Every control of the calibration panel, under its name, with its caption and default as the
// panel is created. Arrays of controls keep their indexes; the few arrays of which only some
// members exist are maps from index to control.

#include <array>
#include <map>

#include "shell/controls.h"

namespace ombrelay {

struct CalibrationControls {
  CalibrationControls();

  // The five calibration buttons, which the panel enables and disables together.
  std::array<Button*, 5> CalibrationButtons() {
    return {&btnCalCCCounter, &btnCalibrate, &btnPackVoltage, &btnBoardOffset, &btnPackCurrent};
  }
  std::array<const Button*, 5> CalibrationButtons() const {
    return {&btnCalCCCounter, &btnCalibrate, &btnPackVoltage, &btnBoardOffset, &btnPackCurrent};
  }

  // The frame of the panel.
  TabStrip SStabCal;
  std::array<Picture, 2> picCalibration;
  Label txtVersion;
  CheckBox chkUpdates;
  Timer tmrScan;
  std::array<Label, 2> lblScanWarning;  // one on each page

  // Page 0: voltage and temperature.
  Frame frmVoltTemp;
  Label lblVTCalibration;
  std::array<Label, 3> lblHelp;  // page 0, then the two offset frames of page 1
  CheckBox chkVoltageCal;
  std::array<Label, 4> Label1;  // "Cell 1" ... "Cell 1 + 2 + 3 + 4"
  std::array<TextBox, 4> txtVoltage;
  std::array<TextBox, 4> txtCalMeasVoltage;
  Label lblVoltageEnteredHeading;
  Label lblVoltageMeasuredHeading;
  std::map<int, Label> lblCalibration;  // unit labels 19 and 22 of row 3, 26 of the battery row
  std::map<int, Label> lblBatVoltage;   // 4: the battery row
  Label lblCalibrationBat;
  TextBox txtBatVoltageActual;
  TextBox txtBatMeasured;
  Label lblCellCountHeading;
  TextBox txtCellCount;

  Frame Frame1;  // temperatures
  std::array<CheckBox, 5> chkTemp;
  std::array<TextBox, 5> txtActualTemp;
  std::array<TextBox, 5> txtMeasTemp;
  std::array<Label, 10> lbldegCmeasured;  // 0 to 4 beside measured, 5 to 9 beside entered
  Label lblTempEnteredHeading;
  Label lblTempMeasuredHeading;

  Button btnCalibrate;
  Picture imgCalDoneBox;
  Button btncalpg1;

  Frame frmPackCal;
  TextBox txtPackMeasured;
  TextBox txtPackActualVoltage;
  Label lblPackMeasuredHeading;
  Label lblPackEnteredHeading;
  Button btnPackVoltage;
  Picture imgPackVoltage;

  // Page 1: current and offsets.
  Button btncalpage2;
  Frame frmCCOffset;
  Button btnCalCCCounter;
  Picture imageCCOffsetDone;
  Frame frmBoardOffset;
  Button btnBoardOffset;
  Picture ImgBoardOffset;
  Frame frmCurrentCal;
  TextBox txtMeasuredCurrent;
  TextBox txtActualCurrent;
  Label lblCurrentMeasuredHeading;
  Label lblCurrentEnteredHeading;
  Label lblCurrentCal;
  Button btnPackCurrent;
  Picture ImgPackCurrent;

  // Beside the pages: the two grids.
  Label lblCurrentValues;
  Grid displaygrid;
  Label lblCalDF;
  Grid DFGrid;
};

}  // namespace ombrelay
