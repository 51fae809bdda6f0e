#include "hosts/smbus_pec.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

namespace ombrelay {
namespace {

std::span<const std::uint8_t> Bytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

TEST(SmbusPec, IsTheSmbusCrc8AndGoesOnAcrossParts) {
  // The check value of CRC-8 with polynomial 0x07 and no reflection.
  EXPECT_EQ(SmbusPec(Bytes("123456789")), 0xF4);
  EXPECT_EQ(SmbusPec(Bytes("6789"), SmbusPec(Bytes("12345"))), 0xF4);
  // A transfer's own code appended makes the code of the whole zero, as the gauge checks it.
  const std::array<std::uint8_t, 4> word = {0x16, 0x09, 0x34, 0x12};
  const std::array<std::uint8_t, 1> pec = {SmbusPec(word)};
  EXPECT_EQ(SmbusPec(pec, SmbusPec(word)), 0);
}

}  // namespace
}  // namespace ombrelay
