#pragma once
// The manufacturer data command: a block that answers what the last selecting ManufacturerAccess
// word chose: voltages, temperatures, Operation Status, manufacturing status.

#include <cstdint>

#include "sim/calibration_mode.h"
#include "sim/command_set.h"
#include "sim/manufacturer_access.h"
#include "sim/measurement_reports.h"
#include "sim/security_mode.h"
#include "sim/selected_block.h"

namespace ombrelay::sim {

class ManufacturerData {
 public:
  static constexpr std::uint8_t kCommand = 0x23;
  static constexpr std::uint16_t kOperationStatusWord = 0x0054;
  static constexpr std::uint16_t kManufacturingStatusWord = 0x0057;
  static constexpr std::uint16_t kVoltagesWord = 0x0071;
  static constexpr std::uint16_t kTemperaturesWord = 0x0072;

  // Each block is made at the read, from the state the gauge is in then.
  ManufacturerData(CommandSet& commands, ManufacturerAccess& access,
                   const MeasurementReports& measurements, const SecurityMode& security,
                   const CalibrationMode& calibration);
  ManufacturerData(const ManufacturerData&) = delete;
  ManufacturerData& operator=(const ManufacturerData&) = delete;

  // For parts that select further blocks on the command: raw output.
  SelectedBlock& Data() { return data_; }

 private:
  SelectedBlock data_;
};

// Operation Status: the security mode in the two low bits of byte 1, other bits set as well.
Bytes OperationStatusBlock(SecurityMode mode);

}  // namespace ombrelay::sim
