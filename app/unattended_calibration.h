#pragma once
// For unattended runs: types what the bench applies into the calibration panel and presses its
// voltage and temperature button, as an engineer at the bench would, through the widgets.

#include "sim/measurements.h"

class QWidget;

namespace ombrelay {

// Ticks continuous updates, so that the scan fills the measured boxes the checks look at.
void StartContinuousUpdates(QWidget& panel);

// Enters the stack voltages, the battery voltage and the temperatures of every sensor the page
// shows a measured value for, ticks them, and presses the button.
void CalibrateAsTheBenchApplies(QWidget& panel, const sim::Measurements& applied);

}  // namespace ombrelay
