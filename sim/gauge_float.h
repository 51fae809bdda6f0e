#pragma once
// The four-byte floating-point format the gauge keeps its gains in, as its firmware reads it:
// byte 0 is a binary exponent biased by 128; bytes 1 to 3 hold a 24-bit magnitude, most
// significant byte first, normalised so that its top bit is always set. That bit is not stored:
// the sign takes its place. The format has no zero.

#include <cstdint>
#include <span>

namespace ombrelay::sim {

// sign * magnitude / 2^24 * 2^(byte 0 - 128).
double DecodeGaugeFloat(std::span<const std::uint8_t, 4> bytes);

}  // namespace ombrelay::sim
