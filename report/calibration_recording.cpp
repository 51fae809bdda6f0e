#include "report/calibration_recording.h"

#include <array>
#include <ctime>
#include <span>

namespace ombrelay {
namespace {

bool Ticked(const CheckBox& box) {
  return box.Visible && box.Value != 0;
}

void VoltageTemperatureEntries(const NBCal& panel, std::vector<ReportedValue>& entered) {
  if (Ticked(panel.chkVoltageCal)) {
    for (std::size_t row = 0; row < panel.txtVoltage.size(); ++row) {
      const TextBox& box = panel.txtVoltage[row];
      if (box.Visible && box.Enabled)
        entered.push_back({IndexedName("txtVoltage", row),
                           panel.Label1[row].Caption + ", entered (mV)", box.Text});
    }
    const TextBox& battery = panel.txtBatVoltageActual;
    if (battery.Visible && battery.Enabled)
      entered.push_back({"txtBatVoltageActual", "Battery voltage, entered (mV)", battery.Text});
  }
  for (std::size_t row = 0; row < panel.txtActualTemp.size(); ++row) {
    if (Ticked(panel.chkTemp[row]))
      entered.push_back({IndexedName("txtActualTemp", row),
                         panel.chkTemp[row].Caption + ", entered (C)",
                         panel.txtActualTemp[row].Text});
  }
}

}  // namespace

const CalibrationButton& ButtonOf(CalibrationKind kind) {
  static const std::array<CalibrationButton, 5> buttons = {{
      {&NBCal::btnCalibrate, &NBCal::btnCalibrate_Click, &NBCal::imgCalDoneBox, "imgCalDoneBox",
       "Voltage and temperature calibration"},
      {&NBCal::btnPackVoltage, &NBCal::btnPackVoltage_Click, &NBCal::imgPackVoltage,
       "imgPackVoltage", "Pack voltage calibration"},
      {&NBCal::btnPackCurrent, &NBCal::btnPackCurrent_Click, &NBCal::ImgPackCurrent,
       "ImgPackCurrent", "Current calibration"},
      {&NBCal::btnCalCCCounter, &NBCal::btnCalCCCounter_Click, &NBCal::imageCCOffsetDone,
       "imageCCOffsetDone", "Coulomb counter offset calibration"},
      {&NBCal::btnBoardOffset, &NBCal::btnBoardOffset_Click, &NBCal::ImgBoardOffset,
       "ImgBoardOffset", "Board offset calibration"},
  }};
  return buttons[static_cast<std::size_t>(kind)];
}

std::vector<ReportedValue> MeasuredValues(const NBCal& panel) {
  std::vector<ReportedValue> shown;
  for (std::size_t row = 0; row < panel.txtCalMeasVoltage.size(); ++row) {
    const TextBox& box = panel.txtCalMeasVoltage[row];
    if (box.Visible && box.Enabled)
      shown.push_back({IndexedName("txtCalMeasVoltage", row),
                       panel.Label1[row].Caption + ", measured (mV)", box.Text});
  }
  if (panel.txtBatMeasured.Visible)
    shown.push_back(
        {"txtBatMeasured", "Battery voltage, measured (mV)", panel.txtBatMeasured.Text});
  if (panel.frmPackCal.Visible)
    shown.push_back({"txtPackMeasured", "Pack voltage, measured (mV)", panel.txtPackMeasured.Text});
  shown.push_back({"txtMeasuredCurrent", "Current, measured (mA)", panel.txtMeasuredCurrent.Text});
  for (std::size_t row = 0; row < panel.txtMeasTemp.size(); ++row) {
    if (panel.txtMeasTemp[row].Visible)
      shown.push_back({IndexedName("txtMeasTemp", row),
                       panel.chkTemp[row].Caption + ", measured (C)", panel.txtMeasTemp[row].Text});
  }
  return shown;
}

std::vector<ReportedValue> EnteredValues(const NBCal& panel, CalibrationKind kind) {
  std::vector<ReportedValue> entered;
  switch (kind) {
    case CalibrationKind::VoltageTemperature:
      VoltageTemperatureEntries(panel, entered);
      break;
    case CalibrationKind::PackVoltage:
      entered.push_back(
          {"txtPackActualVoltage", "Pack voltage, entered (mV)", panel.txtPackActualVoltage.Text});
      break;
    case CalibrationKind::Current:
      entered.push_back({"txtActualCurrent", "Current, entered (mA)", panel.txtActualCurrent.Text});
      break;
    default:
      break;
  }
  return entered;
}

void CalibrationRecorder::Pressing(const NBCal& panel, CalibrationKind kind) {
  kind_ = kind;
  report_ = {};
  report_.calibration = ButtonOf(kind).title;
  report_.time = std::time(nullptr);
  report_.entered = EnteredValues(panel, kind);
  report_.shownBefore = MeasuredValues(panel);
  firstOperation_ = operations_.size();
  firstMessage_ = messages_.size();
}

CalibrationReport CalibrationRecorder::Pressed(const NBCal& panel) const {
  CalibrationReport report = report_;
  TakeIdentity(report);
  report.done = (panel.*ButtonOf(kind_).mark).Visible;
  const auto messages = std::span(messages_).subspan(std::min(firstMessage_, messages_.size()));
  report.messages.assign(messages.begin(), messages.end());
  report.changes = DataflashChanges(
      std::span(operations_).subspan(std::min(firstOperation_, operations_.size())),
      ConfiguredAreas());
  NameCalibrationParameters(report.changes);
  report.shownAfter = MeasuredValues(panel);
  return report;
}

}  // namespace ombrelay
