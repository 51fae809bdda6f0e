#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "config/device_configuration.h"
#include "config/identification.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"
#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using Block = std::vector<std::uint8_t>;

std::string Decoded(const Block& block) {
  const auto identity = DecodeIdentificationBlock(block);
  if (!identity) return "none";
  return identity->deviceNumber + " " + identity->firmwareVersion + " " + identity->firmwareType +
         " " + identity->buildNumber;
}

TEST(IdentificationBlock, BothFormsAndEveryOtherRejected) {
  const std::pair<Block, std::string> cases[] = {
      {{0x12, 0x34, 0x01, 0x07, 0x00, 0x12, 2, 0, 0, 0, 0}, "1234 1_07 2 0012"},
      // A type of 255 stands in byte 9; types are decimal.
      {{0x12, 0x34, 0x01, 0x07, 0x00, 0x12, 255, 0, 0, 3, 0}, "1234 1_07 3 0012"},
      {{0x12, 0x34, 0x01, 0x07, 0x00, 0x12, 254, 0, 0, 3, 0}, "1234 1_07 254 0012"},
      // Leading digits are not padded, the rest are.
      {{0x0B, 0x02, 0x1A, 0x0C, 0x0F, 0x00, 17, 0, 0, 0, 0}, "B02 1A_0C 17 0F00"},
      // The long form drops a leading zero type byte.
      {{0x4B, 0x60, 0x01, 0x10, 0x00, 0x03, 0, 0, 0, 0, 1, 0, 5}, "4B60 1_10 5 0003"},
      {{0x4B, 0x60, 0x01, 0x10, 0x00, 0x03, 0, 0, 0, 0, 1, 1, 5}, "4B60 1_10 15 0003"},
      {{0x4B, 0x60, 0x01, 0x10, 0x00, 0x03, 0, 0, 0, 0, 1, 0x12, 0x0A}, "4B60 1_10 12A 0003"},
      {{0x4B, 0x60, 0x01, 0x10, 0x00, 0x03, 0, 0, 0, 0, 2, 0, 5}, "none"},
      {{0x4B, 0x60, 0x01, 0x10, 0x00, 0x03, 0, 0, 0, 0, 0, 0, 5}, "none"},
  };
  for (const auto& [block, expected] : cases)
    EXPECT_EQ(Decoded(block), expected) << block.size();
  for (const std::size_t length : {0U, 1U, 10U, 12U, 14U, 32U})
    EXPECT_EQ(Decoded(Block(length, 1)), "none") << length;
}

TEST(LoadDeviceConfiguration, TriesTheFiveSectionsFromLeastToMostSpecific) {
  const std::string names[] = {"D4D31", "D4D31_T_1", "D4D31_2_05", "D4D31_2_05_1",
                               "D4D31_2_05_1_0020"};
  testing::TempAppDir appdir(false);
  testing::SimBench bench(std::nullopt, appdir.Path().string());
  g_sDeviceNumber = "4D31";
  g_sFirmwareVersion = "2_05";
  g_sFirmwareType = "1";
  g_sBuildNumber = "0020";
  g_sDataFlashMapPath = OMBRELAY_SOURCE_APPDIR "/maps/morlin-4D31-2_05.json";
  // Sections up to the most specific one present, written in reverse: each sets NumSamples
  // anew, so the last one tried shows. An empty section counts as none.
  for (int most = 0; most < 5; ++most) {
    std::string file = "[D4D31_2_05_1_0020_9]\nNumSamples=99\n";
    if (most < 4) file += "[" + names[4] + "]\n";
    for (int i = most; i >= 0; --i) {
      file += "[" + names[i] + "]\nDFType=KELD\nTS1Supported=0\nTS2Supported=0\nNumSamples=" +
              std::to_string(10 + i) + "\n";
    }
    appdir.Write("config.ini", file);
    EXPECT_EQ(LoadDeviceConfiguration(), 0) << most;
    EXPECT_EQ(g_iNumSamples, 10 + most) << most;
  }
  EXPECT_TRUE(bench.MessageTexts().empty());
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
