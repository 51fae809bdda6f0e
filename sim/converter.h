#pragma once
// The gauge's analog front end: what it turns the applied voltages, temperatures and current
// into before any calibration. Each converter has errors of its own, which a bench sets and a
// calibration has to take out.

#include <array>
#include <cstdint>

#include "sim/measurements.h"

namespace ombrelay::sim {

struct ConverterErrors {
  std::array<double, 4> cellGain{};          // relative: 0.025 reads 2.5 % high
  std::array<std::int16_t, 4> cellOffset{};  // counts
  double batteryGain = 0.0;
  double packGain = 0.0;
  // Tenths of a kelvin, in the order of Measurements::Sensor.
  std::array<std::int16_t, Measurements::kSensorCount> temperature{};
  // Relative, as the sense resistor's real value differs from its nominal one: 0.03 reads 3 %
  // high.
  double senseResistorError = 0.0;
  // Counts the coulomb counter reads with its input shorted, and what the board adds to that
  // on the normal input.
  std::int16_t coulombCounterOffset = 0;
  std::int16_t boardOffset = 0;

  bool operator==(const ConverterErrors&) const = default;
};

// Raw counts, as the raw calibration block carries them.
struct RawReadings {
  std::int16_t coulombCounter = 0;  // the normal input
  std::int16_t shortedCoulombCounter = 0;
  std::array<std::uint16_t, 4> cells{};
  std::uint16_t battery = 0;
  std::uint16_t pack = 0;
  std::array<std::int16_t, Measurements::kSensorCount> temperatures{};  // tenths of a kelvin
};

// A perfect converter gives 3.2 counts per mV on every voltage input, so the nominal scale
// and gains are 65536 / 3.2.
inline constexpr double kCountsPerMv = 3.2;
inline constexpr std::int32_t kNominalScale = 20480;

// Voltages: round(mV * 3.2 * (1 + gain error) + offset); temperatures: applied plus the
// sensor's error; coulomb counter: round(mA * (1 + sense resistor error)) plus the offsets, the
// converter's alone with the input shorted. Each is held to the range of its word.
RawReadings Convert(const Measurements& applied, const ConverterErrors& errors);

}  // namespace ombrelay::sim
