#include "sim/manufacturer_data.h"

#include <functional>
#include <utility>

namespace ombrelay::sim {
namespace {

// Status bits beside the security mode, so that a reader who forgets to mask is caught.
constexpr std::uint8_t kOtherOperationStatusByte0 = 0x47;
constexpr std::uint8_t kOtherOperationStatusByte1 = 0x5C;
constexpr std::uint8_t kOperationStatusByte2 = 0x00;
constexpr std::uint8_t kOperationStatusByte3 = 0x01;

}  // namespace

Bytes OperationStatusBlock(SecurityMode mode) {
  return {kOtherOperationStatusByte0,
          static_cast<std::uint8_t>(kOtherOperationStatusByte1 | static_cast<std::uint8_t>(mode)),
          kOperationStatusByte2, kOperationStatusByte3};
}

ManufacturerData::ManufacturerData(CommandSet& commands, ManufacturerAccess& access,
                                   const MeasurementReports& measurements,
                                   const SecurityMode& security, const CalibrationMode& calibration)
    : data_(commands, kCommand) {
  const std::pair<std::uint16_t, std::function<Bytes()>> blocks[] = {
      {kOperationStatusWord, [&security] { return OperationStatusBlock(security); }},
      {kManufacturingStatusWord, [&calibration] { return calibration.ManufacturingStatusBlock(); }},
      {kVoltagesWord, [&measurements] { return measurements.VoltagesBlock(); }},
      {kTemperaturesWord, [&measurements] { return measurements.TemperaturesBlock(); }},
  };
  // No structured binding: clang 14, which builds the fuzzers, cannot capture one.
  for (const auto& entry : blocks) {
    const std::function<Bytes()>& block = entry.second;
    access.On(entry.first, [this, block] {
      data_.Select({[block]() -> std::optional<Bytes> { return block(); }, {}});
    });
  }
}

}  // namespace ombrelay::sim
