#include "sim/identification.h"

#include <utility>

namespace ombrelay::sim {
namespace {

std::uint8_t High(std::uint16_t value) {
  return static_cast<std::uint8_t>(value >> 8);
}
std::uint8_t Low(std::uint16_t value) {
  return static_cast<std::uint8_t>(value & 0xFF);
}

}  // namespace

Bytes BuildIdentificationBlock(const Identity& identity) {
  const bool isLong = identity.form == IdentificationForm::Long;
  Bytes block(isLong ? 13 : 11, 0);
  block[0] = High(identity.deviceNumber);
  block[1] = Low(identity.deviceNumber);
  block[2] = identity.firmwareMajor;
  block[3] = identity.firmwareMinor;
  block[4] = High(identity.buildNumber);
  block[5] = Low(identity.buildNumber);
  switch (identity.form) {
    case IdentificationForm::Short:
      block[6] = Low(identity.firmwareType);
      break;
    case IdentificationForm::ShortTypeInByte9:
      block[6] = 255;
      block[9] = Low(identity.firmwareType);
      break;
    case IdentificationForm::Long:
      block[10] = 1;
      block[11] = High(identity.firmwareType);
      block[12] = Low(identity.firmwareType);
      break;
  }
  return block;
}

Identification::Identification(Bytes block, CommandSet& commands, SelectedBlock& data,
                               PendingErrors& errors)
    : block_(std::move(block)), data_(data), errors_(errors) {
  commands.OnWriteBlock(kRequestFrameCommand, [this](std::span<const std::uint8_t>) {
    SelectBlock();
    return true;
  });
  commands.OnWriteBlock(kRequestCommand, [this](std::span<const std::uint8_t>) {
    SelectBlock();
    errors_.Queue(requestErrors_);
    return true;
  });
}

// The block is taken at the read, so a block set after the request is the one answered.
void Identification::SelectBlock() {
  data_.Select({[this]() -> std::optional<Bytes> { return block_; }, {}});
}

}  // namespace ombrelay::sim
