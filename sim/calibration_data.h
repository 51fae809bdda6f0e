#pragma once
// The calibration data the gauge keeps in its dataflash, where each family keeps it, and how the
// gauge applies it to its raw counts. It is read at each report, so a calibration written over
// the bus takes effect at once.

#include <array>
#include <cstdint>
#include <optional>

#include "sim/converter.h"
#include "sim/dataflash.h"
#include "sim/family.h"
#include "sim/measurements.h"

namespace ombrelay::sim {

struct CalibrationData {
  // Scale n turns the raw sum of cells 1 to n into the stack voltage up to cell n.
  std::array<std::int32_t, 4> cellScale{};
  // Nothing on families that keep no battery gain: they report the battery nominally.
  std::optional<std::int32_t> batteryGain;
  std::int32_t packGain = 0;
  // Tenths of a kelvin for the internal sensor and TS1 to TS4; none where the family keeps no
  // offset for the sensor.
  std::array<std::optional<std::int8_t>, 5> temperatureOffset{};
  // The gain on the sense resistor's counts, and the stored gain at which the firmware counts
  // one mA per count: the family's factory value.
  double currentGain = 1.0;
  double nominalCurrentGain = 1.0;
  // Each offset is stored as the sum of offsetSamples readings. Families that keep no count
  // take 64, the count the firmware itself samples.
  std::int32_t coulombCounterOffset = 0;
  std::int32_t boardOffset = 0;
  std::int32_t offsetSamples = 0;
};

// Words high byte first, from the family's calibration area; the gauge reads its own dataflash
// whatever its security mode.
CalibrationData ReadCalibrationData(Family family, const Dataflash& dataflash);

// What the gauge reports of raw counts through calibration: stack n = round(sum of raw cells
// 1 to n * scale n / 65536) and cell n = stack n - stack n-1; battery and pack by their gains;
// temperatures plus their offsets; current = round((raw normal coulomb counter - (coulomb counter
// offset + board offset) / samples) * gain / nominal gain), a count below one sample taken as
// one. Cells beyond cellCount read 0; every report is held to the range of its word.
Measurements Calibrated(const RawReadings& raw, const CalibrationData& calibration, int cellCount);

}  // namespace ombrelay::sim
