#include "sim/gauge_float.h"

#include <cmath>

namespace ombrelay::sim {
namespace {

constexpr int kExponentBias = 128;
constexpr int kMagnitudeBits = 24;
constexpr std::uint32_t kTopBit = 1U << (kMagnitudeBits - 1);

}  // namespace

double DecodeGaugeFloat(std::span<const std::uint8_t, 4> bytes) {
  const std::uint32_t stored =
      std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | std::uint32_t{bytes[3]};
  const double magnitude =
      std::ldexp(static_cast<double>(stored | kTopBit), bytes[0] - kExponentBias - kMagnitudeBits);
  return (stored & kTopBit) != 0 ? -magnitude : magnitude;
}

}  // namespace ombrelay::sim
