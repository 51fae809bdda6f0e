#pragma once
// What the bench applies to the gauge's inputs: cell, battery and pack voltages, temperatures,
// current.

#include <array>
#include <cstdint>

namespace ombrelay::sim {

struct Measurements {
  // Where each sensor stands in temperatures, the order of the gauge's temperature block.
  enum Sensor { kInternal, kTS1, kTS2, kTS3, kTS4, kCell, kFet, kSensorCount };

  // Room temperature, 25 C, in tenths of a kelvin.
  static constexpr std::uint16_t kRoomTemperature = 2982;

  std::array<std::uint16_t, 4> cellMv{};  // cell 1 at the bottom of the stack
  std::uint16_t batteryMv = 0;
  std::uint16_t packMv = 0;
  std::array<std::uint16_t, kSensorCount> temperatures{
      kRoomTemperature, kRoomTemperature, kRoomTemperature, kRoomTemperature,
      kRoomTemperature, kRoomTemperature, kRoomTemperature};
  std::int16_t currentMa = 0;  // negative while discharging

  bool operator==(const Measurements&) const = default;
};

}  // namespace ombrelay::sim
