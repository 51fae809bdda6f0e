#pragma once
// The two pages of the calibration panel, laid out with ordinary layouts inside the page
// widgets that the panel places by their twips.

class QWidget;

namespace ombrelay {

class NBCal;
class WidgetFactory;

// Page 0: cell voltages, battery voltage, temperatures, and the pack frame.
QWidget* MakeVoltageTemperaturePage(NBCal& panel, WidgetFactory& make);
// Page 1: coulomb counter offset, board offset and pack current.
QWidget* MakeCurrentPage(NBCal& panel, WidgetFactory& make);

}  // namespace ombrelay
