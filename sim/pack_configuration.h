#pragma once
// What the gauge takes from its own configuration in dataflash: how many cells it measures, and
// which sensor its Smart Battery Temperature word reports. The places are those of the shipped
// dataflash maps.

#include <cstddef>
#include <cstdint>

#include "sim/dataflash.h"
#include "sim/family.h"
#include "sim/measurements.h"

namespace ombrelay::sim {

struct PackConfiguration {
  // System Configuration (Operation Cfg A): MORLIN counts cells in its second byte, KELD_PLUS in
  // its first.
  static constexpr std::size_t kMorlinSystemConfigurationAddress = 320;
  static constexpr std::size_t kKeldPlusSystemConfigurationAddress = 448;
  // The cell count is these bits plus one.
  static constexpr std::uint8_t kCellBits = 0x03;
  // MORLIN's second byte: with bits 3, 4 and 6 all clear the Temperature word reports the
  // internal sensor, else TS1.
  static constexpr std::uint8_t kExternalTemperatureBits = 0x58;
};

int ConfiguredCellCount(Family family, const Dataflash& dataflash);

// MORLIN by its System Configuration. KELD reports TS2, the sensor whose offset its calibration
// works out from this very word; QUILL and KELD_PLUS report TS1.
Measurements::Sensor TemperatureWordSensor(Family family, const Dataflash& dataflash);

}  // namespace ombrelay::sim
