#pragma once
// The core calculation: known voltages and temperatures against the gauge's raw readings give
// new cell scales, battery gain and temperature offsets, patched into the local calibration data
// and written to the gauge with read-back.

#include <array>
#include <cstdint>

#include "shell/host.h"

namespace ombrelay {

// Marks a sensor that is not to be calibrated.
inline constexpr double NoSensorValue = -300.0;

struct VoltageCalInputs {
  // Known stack voltages in mV from the pack's negative end up to cell n + 1.
  std::array<std::int16_t, 4> aiCellVoltage{};
  double dBatteryVoltage = 0.0;
  std::int16_t iCellCount = 0;
};

struct TemperatureCalInputs {
  // Degrees C for internal, TS1 to TS4; NoSensorValue where not selected.
  std::array<double, 5> adActual{NoSensorValue, NoSensorValue, NoSensorValue, NoSensorValue,
                                 NoSensorValue};
  std::array<double, 5> adMeasured{};
};

// bVoltage and bTemperature count as selected only when True. 0 on success; 1 after a message,
// a run-time error of the arithmetic included. Writes the calibration data back also when
// nothing was selected. Expects EnterCalibrationMode to have succeeded.
Status CalibrateVoltageandTemperature(bool bVoltage, bool bTemperature,
                                      const VoltageCalInputs& voltages,
                                      const TemperatureCalInputs& temperatures);

// The new offset byte (two's complement) from actual and measured degrees C and the current
// offset in tenths; 1 with out untouched when it falls outside -128 to 127. Beyond a 16-bit value
// it throws RuntimeError("Overflow"), for the caller's error trap.
Status ComputeTempOffset(double actual, double measured, double current, std::uint8_t& out);

}  // namespace ombrelay
