#pragma once
// The calibrations of current and pack voltage: the coulomb counter's offset with its input
// shorted, the board's offset on the normal input, the sense resistor's gain under a known
// current, and the pack pin's gain. Each patches the local calibration data and writes it in the
// family's style; each failure has been shown to the user when 1 comes back.

#include <string>

#include "shell/host.h"

namespace ombrelay {

// Expects EnterCalibrationMode with mode 1: the gauge streams its shorted-input readings.
Status CalibrateCCOffset();
// Expects EnterCalibrationMode with mode 0. Sends the exit word on every path past the checks.
Status CalibrateBoardOffset();
// actual: the pack pin's voltage in mV. Expects EnterCalibrationMode with mode 0, which leaves
// the raw pack reading in block 2. KELD and QUILL have no formula: their stored gain stays.
Status CalibratePackVoltage(double actual);
// actual: the known current in mA, negative for discharge. Expects EnterCalibrationMode with
// mode 0, which leaves the stored gain's text up to date.
Status CalibrateSenseResistor(const std::string& actual);

}  // namespace ombrelay
