#include "sim/calibration_mode.h"

namespace ombrelay::sim {
namespace {

// Status bits that have nothing to do with the mode, so that a reader who forgets to mask
// is caught.
constexpr std::uint8_t kOtherStatusByte0 = 0x25;
constexpr std::uint8_t kOtherStatusByte1 = 0x16;
constexpr std::uint8_t kFlagBitOfByte1 = 0x80;
constexpr std::uint16_t kOtherFlagWordBits = 0x4A13;

}  // namespace

CalibrationMode::CalibrationMode(Family family, CommandSet& commands, ManufacturerAccess& access) {
  access.On(kSwitchWord, [this] {
    if (!refusing_) active_ = !active_;
  });
  if (family == Family::KeldPlus) {
    commands.OnReadWord(kFlagWordCommand,
                        [this]() -> std::optional<std::uint16_t> { return FlagWord(); });
  }
}

void CalibrationMode::SetFlagStalled(bool stalled) {
  stalledFlag_ = stalled ? std::optional<bool>(Flag()) : std::nullopt;
}

Bytes CalibrationMode::ManufacturingStatusBlock() const {
  const auto flag = static_cast<std::uint8_t>(Flag() ? kFlagBitOfByte1 : 0);
  return {kOtherStatusByte0, static_cast<std::uint8_t>(kOtherStatusByte1 | flag)};
}

std::uint16_t CalibrationMode::FlagWord() const {
  return static_cast<std::uint16_t>(kOtherFlagWordBits | (Flag() ? kFlagWordBit : 0));
}

}  // namespace ombrelay::sim
