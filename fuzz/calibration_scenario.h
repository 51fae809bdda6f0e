#pragma once
// What the gauge-reply fuzzer puts the calibration panel through after its start-up: one tick of
// the live scan with updates on, and a voltage and temperature calibration with the entries an
// engineer types for a pack at kCellMv a cell and sensors at kSensorCelsius.

#include <cstdint>

#include "panel/nbcal.h"

namespace ombrelay::fuzz {

inline constexpr std::uint16_t kCellMv = 3700;
inline constexpr int kSensorCelsius = 25;

void ScanAndCalibrate(NBCal& panel);

}  // namespace ombrelay::fuzz
