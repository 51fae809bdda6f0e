#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <ios>
#include <string>
#include <utility>

#include "gauge/value_conversion.h"
#include "sim/gauge_float.h"

namespace ombrelay::sim {
namespace {

std::array<std::uint8_t, 4> BytesOf(std::uint32_t word) {
  return {static_cast<std::uint8_t>(word >> 24), static_cast<std::uint8_t>(word >> 16 & 0xFF),
          static_cast<std::uint8_t>(word >> 8 & 0xFF), static_cast<std::uint8_t>(word & 0xFF)};
}

// The program's encoding of value.
std::array<std::uint8_t, 4> Encoded(double value) {
  return BytesOf(static_cast<std::uint32_t>(std::stoul(DoubletoGaugeFloat(value), nullptr, 16)));
}

TEST(GaugeFloat, DecodesTheSamplesFloatsAndWhatTheProgramWrites) {
  // The samples' factory gains and capacity gain, a negative value and one below a half.
  const std::pair<std::uint32_t, double> known[] = {
      {0x80700000, 0.9375}, {0x81080000, 1.0625}, {0x81100000, 1.125}, {0x82200000, 2.5},
      {0x93098000, 281600}, {0x81C00000, -1.5},   {0x7F000000, 0.25}};
  for (const auto& [word, value] : known)
    EXPECT_EQ(DecodeGaugeFloat(BytesOf(word)), value) << std::hex << word;
  for (const double value : {0.9419, 280932.625, -1941.07, 0.00001})
    EXPECT_NEAR(DecodeGaugeFloat(Encoded(value)), value, std::abs(value) * 1e-7);
}

}  // namespace
}  // namespace ombrelay::sim
