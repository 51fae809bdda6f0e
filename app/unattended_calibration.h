#pragma once
// For unattended runs: types what the bench applies into the calibration panel and presses its
// calibration buttons, as an engineer at the bench would, through the widgets.

#include "sim/measurements.h"

class QWidget;

namespace ombrelay {

// Interval of the panel's scan, and a little more: by then one tick has filled the boxes.
inline constexpr int kAfterOneScanMs = 2500;

// Ticks continuous updates, so that the scan fills the measured boxes the checks look at.
void StartContinuousUpdates(QWidget& panel);

// Enters the stack voltages, the battery voltage and the temperatures of every sensor the page
// shows a measured value for, ticks them, and presses the button.
void CalibrateAsTheBenchApplies(QWidget& panel, const sim::Measurements& applied);

// Turns the bench sources dock's current to no load and presses the coulomb counter and board
// offset buttons; turns it to a discharge of 2 A, enters that and presses the current button;
// enters the pack voltage and presses its button; then waits for a scan to show the results.
// True when all four done-marks show. applied is what the gauge has applied, kept up to date by
// the dock. showAnewBetweenOffsets: for a gauge that reads its calibration table at start-up
// only, the panel is shown anew between the two offsets, as the board offset builds on the
// coulomb counter offset the table holds.
bool CalibrateCurrentAsTheBenchApplies(QWidget& panel, const sim::Measurements& applied,
                                       bool showAnewBetweenOffsets);

}  // namespace ombrelay
