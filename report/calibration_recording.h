#pragma once
// One press of a calibration button, recorded for its report: what the panel showed entered and
// measured around it, and what the bus log and the messages gained while it ran. The command
// line and the plug-in record a press alike.

#include <cstddef>
#include <vector>

#include "hosts/bus_operation.h"
#include "panel/nbcal.h"
#include "report/calibration_report.h"
#include "report/shown_message.h"

namespace ombrelay {

enum class CalibrationKind { VoltageTemperature, PackVoltage, Current, CcOffset, BoardOffset };

// The button of one calibration, the mark that shows it done, and what it is called.
struct CalibrationButton {
  Button NBCal::*button;
  void (NBCal::*click)();
  Picture NBCal::*mark;
  const char* markName;
  const char* title;
};

const CalibrationButton& ButtonOf(CalibrationKind kind);

// The measured boxes of the panel that this gauge uses, with what the user reads beside them.
std::vector<ReportedValue> MeasuredValues(const NBCal& panel);

// The entries the calibration takes from the page its button stands on.
std::vector<ReportedValue> EnteredValues(const NBCal& panel, CalibrationKind kind);

class CalibrationRecorder {
 public:
  // operations and messages are logs that only grow while a press is recorded.
  CalibrationRecorder(const std::vector<BusOperation>& operations,
                      const std::vector<ShownMessage>& messages)
      : operations_(operations), messages_(messages) {}

  // Right before the press.
  void Pressing(const NBCal& panel, CalibrationKind kind);
  // Right after it: the report, with the values shown now.
  CalibrationReport Pressed(const NBCal& panel) const;

 private:
  const std::vector<BusOperation>& operations_;
  const std::vector<ShownMessage>& messages_;
  CalibrationKind kind_ = CalibrationKind::VoltageTemperature;
  CalibrationReport report_;
  std::size_t firstOperation_ = 0;
  std::size_t firstMessage_ = 0;
};

}  // namespace ombrelay
