#pragma once
// What the security panel's exchanges with the gauge share: the block command they all run on,
// the colours of a verdict, and the three forms of a digest as AUTHENTICATE gives them.

#include <array>
#include <cstdint>
#include <string>

namespace ombrelay {

inline constexpr std::int32_t kAuthenticationCommand = 0x2F;

inline constexpr std::uint32_t kVerdictBlack = 0x000000;
inline constexpr std::uint32_t kVerdictRed = 0xFF0000;

struct KeyedDigest {
  std::string firstPassResult;
  std::string sha1Result;                              // as a reply read off the bus reads
  std::string sha1ResultBigEndian;                     // as the panel shows it
  std::array<std::uint8_t, 256> digestLittleEndian{};  // as it goes on the bus
};

}  // namespace ombrelay
