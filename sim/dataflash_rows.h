#pragma once
// MORLIN's and KELD_PLUS's dataflash access: ManufacturerAccess word 0x0100 + row selects a
// 32-byte row on the shared data command, which then reads or writes it whole.

#include <cstddef>
#include <cstdint>

#include "sim/dataflash.h"
#include "sim/manufacturer_access.h"
#include "sim/selected_block.h"

namespace ombrelay::sim {

struct DataflashRows {
  static constexpr std::uint16_t kFirstRowWord = 0x0100;
  static constexpr std::size_t kRowLength = 32;
  static constexpr std::size_t kRowCount = Dataflash::kSize / kRowLength;
  // The calibration area fills the first two rows.
  static constexpr std::size_t kCalibrationAddress = 0;

  static void Install(ManufacturerAccess& access, SelectedBlock& shared, Dataflash& dataflash);
};

}  // namespace ombrelay::sim
