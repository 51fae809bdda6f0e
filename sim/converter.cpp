#include "sim/converter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace ombrelay::sim {
namespace {

template <typename Word>
Word Saturated(double value) {
  const double rounded = std::round(value);
  return static_cast<Word>(std::clamp(rounded, double{std::numeric_limits<Word>::min()},
                                      double{std::numeric_limits<Word>::max()}));
}

std::uint16_t VoltageCounts(std::uint16_t mv, double gainError, double offset) {
  return Saturated<std::uint16_t>(mv * kCountsPerMv * (1.0 + gainError) + offset);
}

}  // namespace

RawReadings Convert(const Measurements& applied, const ConverterErrors& errors) {
  RawReadings raw;
  for (std::size_t cell = 0; cell < raw.cells.size(); ++cell) {
    raw.cells[cell] =
        VoltageCounts(applied.cellMv[cell], errors.cellGain[cell], errors.cellOffset[cell]);
  }
  raw.battery = VoltageCounts(applied.batteryMv, errors.batteryGain, 0.0);
  raw.pack = VoltageCounts(applied.packMv, errors.packGain, 0.0);
  for (std::size_t sensor = 0; sensor < raw.temperatures.size(); ++sensor) {
    raw.temperatures[sensor] = Saturated<std::int16_t>(
        static_cast<double>(applied.temperatures[sensor]) + errors.temperature[sensor]);
  }
  raw.shortedCoulombCounter = errors.coulombCounterOffset;
  raw.coulombCounter =
      Saturated<std::int16_t>(std::round(applied.currentMa * (1.0 + errors.senseResistorError)) +
                              errors.coulombCounterOffset + errors.boardOffset);
  return raw;
}

}  // namespace ombrelay::sim
