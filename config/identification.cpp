#include "config/identification.h"

#include <array>

#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kRelativeStateOfCharge = 0x0D;
constexpr std::int32_t kIdentificationCommand = 0x2F;
constexpr std::size_t kShortForm = 11;
constexpr std::size_t kLongForm = 13;

std::string Hex2(std::uint8_t value) {
  return PadLeftZeros(Hex(value), 2);
}

// The type bytes of the long form are read as hex text, the first left out when it is 0. A first
// byte whose text holds a letter is kept: gauges only use digit-only values there.
std::string LongFormType(std::uint8_t high, std::uint8_t low) {
  const std::string highText = Hex(high);
  return (highText == "0" ? "" : highText) + Hex(low);
}

// Waits until the bus has been quiet for four passes of 100 ms in a row.
void SettleBus() {
  for (int quietPasses = 0; quietPasses <= 3; ++quietPasses) {
    g_oPlatform->Sleep(100);
    while (g_oHost->CheckForError() != 0)
      quietPasses = 0;
  }
}

}  // namespace

std::optional<DeviceIdentity> DecodeIdentificationBlock(std::span<const std::uint8_t> block) {
  if (block.size() != kShortForm && block.size() != kLongForm) return std::nullopt;
  if (block.size() == kLongForm && block[10] != 1) return std::nullopt;

  DeviceIdentity identity;
  identity.deviceNumber = Hex(block[0]) + Hex2(block[1]);
  identity.firmwareVersion = Hex(block[2]) + "_" + Hex2(block[3]);
  if (block.size() == kShortForm) {
    identity.firmwareType = std::to_string(block[6] == 255 ? block[9] : block[6]);
  } else {
    identity.firmwareType = LongFormType(block[11], block[12]);
  }
  identity.buildNumber = Hex2(block[4]) + Hex2(block[5]);
  return identity;
}

Status CheckDeviceResponds() {
  std::int16_t word = 0;
  g_oHost->ReadSMBusWord_(g_bZenoMAC, word, g_iTargetAddress);
  const Status status = g_oHost->ReadSMBusWord_(kRelativeStateOfCharge, word, g_iTargetAddress);
  if (status != 0) return status;
  return word > 100 ? 1 : 0;
}

std::string ReadDeviceIdentification(std::int16_t nTargetAddr) {
  // These writes ready the gauge to answer with its identification; their outcome shows only
  // as pending bus errors, which the settling clears.
  const std::array<std::uint8_t, 129> zeros{};
  for (const std::int32_t command : {0x22, 0x20, 0x22}) {
    g_oHost->WriteSMBusBlock(command, zeros, 62, nTargetAddr);
  }
  SettleBus();

  std::array<std::uint8_t, 129> block{};
  std::int16_t length = kShortForm;
  const Status status =
      g_oHost->ReadSMBusBlock_(kIdentificationCommand, block, length, nTargetAddr);
  if (status != 0 || length < 0 || static_cast<std::size_t>(length) > block.size()) return {};
  const auto identity =
      DecodeIdentificationBlock(std::span(block).first(static_cast<std::size_t>(length)));
  if (!identity) return {};

  g_oPlatform->Sleep(500);
  g_sDeviceNumber = identity->deviceNumber;
  g_sFirmwareVersion = identity->firmwareVersion;
  g_sFirmwareType = identity->firmwareType;
  g_sBuildNumber = identity->buildNumber;
  return identity->deviceNumber + "_" + identity->firmwareVersion + "_" + identity->firmwareType +
         "_" + identity->buildNumber;
}

}  // namespace ombrelay
