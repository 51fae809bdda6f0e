#pragma once
// What the gauge says it is: its identification block, turned into the four strings that pick
// the configuration sections and the dataflash map.

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "shell/host.h"

namespace ombrelay {

struct DeviceIdentity {
  std::string deviceNumber;
  std::string firmwareVersion;
  std::string firmwareType;
  std::string buildNumber;

  bool operator==(const DeviceIdentity&) const = default;
};

// The identity in an identification block of 11 or 13 bytes; nothing for any other length or
// for a 13-byte block without its form mark.
std::optional<DeviceIdentity> DecodeIdentificationBlock(std::span<const std::uint8_t> block);

// 0 when the gauge answers with a state of charge of at most 100, else a failure.
Status CheckDeviceResponds();

// Reads the identification block and, when it makes sense, sets g_sDeviceNumber,
// g_sFirmwareVersion, g_sFirmwareType and g_sBuildNumber. The result is device number,
// firmware version, type and build joined by "_", or empty when nothing was identified.
std::string ReadDeviceIdentification(std::int16_t nTargetAddr);

}  // namespace ombrelay
