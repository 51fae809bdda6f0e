// Any parameter of a dataflash map as bytes and text: the calibration types, hex words and the
// gauge's counted strings.

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "gauge/value_conversion.h"

namespace ombrelay {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(DataflashValue, SizesOfTheMapsTypes) {
  const std::vector<std::pair<std::string, std::size_t>> known = {
      {"U1", 1}, {"I1", 1}, {"U2", 2}, {"I2", 2},   {"F4", 4},
      {"H2", 2}, {"H1", 1}, {"S5", 5}, {"S12", 12}, {"S32", 32}};
  for (const auto& [type, size] : known)
    EXPECT_EQ(DataflashValueSize(type), size) << type;
  for (const std::string unknown : {"", "U4", "H0", "S33", "H100", "S", "h2", "X2", "F2", "S1x"})
    EXPECT_EQ(DataflashValueSize(unknown), std::nullopt) << unknown;
}

TEST(DataflashValue, TextsFromTheBytesMostSignificantFirst) {
  struct Case {
    std::string type;
    Bytes bytes;
    std::string text;
  };
  const std::vector<Case> cases = {
      {"I2", {0xE3, 0xDC}, "-7204"},
      {"U2", {0xA0, 0x28}, "41000"},
      {"I1", {0x80}, "-128"},
      {"F4", {0x81, 0x00, 0x00, 0x00}, "1"},
      {"H2", {0x0F, 0x22}, "0x0F22"},
      // A string counts its characters in its first byte.
      {"S5", {4, 'L', 'I', 'O', 'N'}, "LION"},
      {"S12", {6, 'T', 'a', 'r', 'v', 'e', 'x', 0, 0, 0, 0, 0}, "Tarvex"},
      // A count past the string's room is cut to it; what does not print is escaped.
      {"S5", {9, 'A', 0x01, 0xFF, 'Z'}, "A\\x01\\xFFZ"},
      {"S1", {0}, ""},
      // Bytes past the type's own are not its business.
      {"U1", {0x07, 0x99}, "7"},
      {"X9", {0x01}, ""},
  };
  for (const Case& each : cases)
    EXPECT_EQ(DataflashValueText(each.type, each.bytes), each.text) << each.type;
  // Erased flash decodes without fault, whatever the type.
  const Bytes erased(12, 0xFF);
  std::string escaped;
  for (int i = 0; i < 11; ++i)
    escaped += "\\xFF";
  EXPECT_EQ(DataflashValueText("S12", erased), escaped);
  EXPECT_NO_THROW(DataflashValueText("F4", erased));
}

TEST(DataflashValue, TooFewBytesAreRefused) {
  EXPECT_THROW(DataflashValueText("I2", Bytes{0x01}), std::out_of_range);
  EXPECT_THROW(DataflashValueText("H2", Bytes{}), std::out_of_range);
  EXPECT_THROW(DataflashValueText("S5", Bytes{4, 'L'}), std::out_of_range);
}

}  // namespace
}  // namespace ombrelay
