#pragma once
// KELD's dataflash access: the calibration area as one 64-byte block on its own block command,
// and the pack configuration word on a word read of the shared data command.

#include <cstddef>
#include <cstdint>

#include "sim/command_set.h"
#include "sim/dataflash.h"

namespace ombrelay::sim {

struct KeldDataflash {
  static constexpr std::uint8_t kCalibrationBlockCommand = 0x58;
  static constexpr std::size_t kCalibrationAddress = 0;
  static constexpr std::size_t kCalibrationLength = 64;
  // High byte first; its high byte AND 3, plus 1, is the count of cells.
  static constexpr std::uint8_t kPackConfigurationCommand = 0x2F;
  static constexpr std::size_t kPackConfigurationAddress = 128;

  // A block write must carry the whole 64 bytes.
  static void Install(CommandSet& commands, Dataflash& dataflash);
};

}  // namespace ombrelay::sim
