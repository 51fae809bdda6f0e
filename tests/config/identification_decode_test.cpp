#include <gtest/gtest.h>

#include <vector>

#include "config/device_configuration.h"
#include "config/identification.h"

namespace ombrelay {
namespace {

std::vector<std::uint8_t> ShortForm(std::uint8_t type6, std::uint8_t type9 = 0) {
  return {0x12, 0x34, 0x01, 0x07, 0x00, 0x12, type6, 0, 0, type9, 0};
}

std::vector<std::uint8_t> LongForm(std::uint8_t mark, std::uint8_t type11, std::uint8_t type12) {
  return {0x4B, 0x60, 0x01, 0x10, 0x00, 0x03, 0, 0, 0, 0, mark, type11, type12};
}

TEST(IdentificationBlock, ShortFormGivesTheFourStrings) {
  const auto identity = DecodeIdentificationBlock(ShortForm(2));
  ASSERT_TRUE(identity);
  EXPECT_EQ(identity->deviceNumber, "1234");
  EXPECT_EQ(identity->firmwareVersion, "1_07");
  EXPECT_EQ(identity->firmwareType, "2");
  EXPECT_EQ(identity->buildNumber, "0012");
}

TEST(IdentificationBlock, TypeOf255StandsInByteNineAndTypesAreDecimal) {
  EXPECT_EQ(DecodeIdentificationBlock(ShortForm(255, 3))->firmwareType, "3");
  EXPECT_EQ(DecodeIdentificationBlock(ShortForm(254, 3))->firmwareType, "254");
  EXPECT_EQ(DecodeIdentificationBlock(ShortForm(17))->firmwareType, "17");
}

TEST(IdentificationBlock, LeadingDigitsAreNotPaddedButTheRestAre) {
  const std::vector<std::uint8_t> block = {0x0B, 0x02, 0x1A, 0x0C, 0x0F, 0x00, 1, 0, 0, 0, 0};
  const auto identity = DecodeIdentificationBlock(block);
  ASSERT_TRUE(identity);
  EXPECT_EQ(identity->deviceNumber, "B02");
  EXPECT_EQ(identity->firmwareVersion, "1A_0C");
  EXPECT_EQ(identity->buildNumber, "0F00");
}

TEST(IdentificationBlock, LongFormDropsALeadingZeroTypeByte) {
  const auto identity = DecodeIdentificationBlock(LongForm(1, 0, 5));
  ASSERT_TRUE(identity);
  EXPECT_EQ(identity->deviceNumber, "4B60");
  EXPECT_EQ(identity->firmwareVersion, "1_10");
  EXPECT_EQ(identity->firmwareType, "5");
  EXPECT_EQ(identity->buildNumber, "0003");
  EXPECT_EQ(DecodeIdentificationBlock(LongForm(1, 1, 5))->firmwareType, "15");
  EXPECT_EQ(DecodeIdentificationBlock(LongForm(1, 0x12, 0x0A))->firmwareType, "12A");
}

TEST(IdentificationBlock, RejectsEveryOtherForm) {
  EXPECT_FALSE(DecodeIdentificationBlock(LongForm(2, 0, 5)));
  EXPECT_FALSE(DecodeIdentificationBlock(LongForm(0, 0, 5)));
  for (std::size_t length : {0U, 1U, 10U, 12U, 14U, 32U}) {
    const std::vector<std::uint8_t> block(length, 1);
    EXPECT_FALSE(DecodeIdentificationBlock(block)) << length;
  }
}

TEST(ConfigSection, SplitsAtTheFirstDotAndReplacesEveryDot) {
  std::string device = "unchanged";
  std::string version = "unchanged";
  EXPECT_TRUE(GetConfigSection("1.2.3", device, version));
  EXPECT_EQ(device, "1");
  EXPECT_EQ(version, "1_2_3");
  EXPECT_TRUE(GetConfigSection(".5", device, version));
  EXPECT_EQ(device, "");
  EXPECT_EQ(version, "_5");

  device = version = "unchanged";
  EXPECT_FALSE(GetConfigSection("4D31", device, version));
  EXPECT_EQ(device, "unchanged");
  EXPECT_EQ(version, "unchanged");
}

}  // namespace
}  // namespace ombrelay
