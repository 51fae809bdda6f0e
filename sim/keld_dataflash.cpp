#include "sim/keld_dataflash.h"

namespace ombrelay::sim {

void KeldDataflash::Install(CommandSet& commands, Dataflash& dataflash) {
  commands.OnReadBlock(kCalibrationBlockCommand, [&dataflash] {
    return dataflash.Read(kCalibrationAddress, kCalibrationLength);
  });
  commands.OnWriteBlock(kCalibrationBlockCommand, [&dataflash](std::span<const std::uint8_t> data) {
    return data.size() == kCalibrationLength && dataflash.Write(kCalibrationAddress, data);
  });
  commands.OnReadWord(kPackConfigurationCommand, [&dataflash]() -> std::optional<std::uint16_t> {
    const auto word = dataflash.Read(kPackConfigurationAddress, 2);
    if (!word) return std::nullopt;
    return static_cast<std::uint16_t>((*word)[0] << 8 | (*word)[1]);
  });
}

}  // namespace ombrelay::sim
