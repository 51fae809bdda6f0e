#pragma once
// The two pages of the calibration panel, laid out with ordinary layouts inside the page
// widgets that the panel places by their twips.

#include <functional>

#include "report/calibration_recording.h"

class QWidget;

namespace ombrelay {

class NBCal;
class WidgetFactory;

// What a calibration button does when clicked: its calibration, recorded for its report.
using CalibrationPress = std::function<void(CalibrationKind)>;

// Page 0: cell voltages, battery voltage, temperatures, and the pack frame.
QWidget* MakeVoltageTemperaturePage(NBCal& panel, WidgetFactory& make,
                                    const CalibrationPress& press);
// Page 1: coulomb counter offset, board offset and pack current.
QWidget* MakeCurrentPage(NBCal& panel, WidgetFactory& make, const CalibrationPress& press);

}  // namespace ombrelay
