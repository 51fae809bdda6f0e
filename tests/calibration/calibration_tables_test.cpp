#include "calibration/calibration_tables.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"

namespace ombrelay {
namespace {

std::string Describe(const MODField& f) {
  return f.sName + "|" + f.sDataType + "|" + f.sOffset + "|" + f.sUnits + "|" + f.sValue + "|" +
         f.sMapName + "|" + (f.bInCalData ? "cal" : "") + "|" + f.sNote;
}

TEST(CalInit, SpotChecksThenStartsAfresh) {
  ResetSharedState();
  for (int run = 0; run < 2; ++run) {
    CalInit();
    const auto& blocks = g_atMODBlocks;
    const auto& records = g_atCalParameters;
    EXPECT_EQ(blocks[1].lFieldCount, 7);
    EXPECT_EQ(Describe(blocks[0].atFields[5]), "Pack Voltage|U2|10|mV|0|||");
    EXPECT_EQ(blocks[3].lDataCommand, 0x0A);
    EXPECT_FALSE(blocks[3].bActive);
    EXPECT_EQ(blocks[4].atFields[0].sName, "");
    EXPECT_EQ(Describe(records[0].atFields[2]), "Cell Scale 2|I2|4|-|20520|ScaleCell0|cal|");
    EXPECT_EQ(Describe(records[0].atFields[7]),
              "Capacity Gain|F4|16|-|280932.625|Capacity Gain|cal|");
    EXPECT_EQ(Describe(records[0].atFields[15]), "Ext 4 Temp Offset|I1|30|.1 deg C|0|ExtTS4||");
    EXPECT_EQ(Describe(records[2].atFields[14]), "Battery Gain|U2|27|--|0|||");
    EXPECT_EQ(Describe(records[2].atFields[15]), "|||||||");
    EXPECT_EQ(g_sngFlashWriteDelay, 0.132F);

    // What the settings and the decoding change must not survive the next start-up.
    g_atMODBlocks[1].lFieldCount = 2;
    g_atMODBlocks[0].atFields[5].sName = "---";
    g_atMODBlocks[4].atFields[0].sName = "Stray";
    g_atCalParameters[0].atFields[15].bInCalData = true;
    g_atCalParameters[2].atFields[14].sValue = "9";
    g_atCalParameters[2].atFields[15].sValue = "9";
  }
  ResetSharedState();
}

TEST(CalBlockIndex, RecordAndBaseFollowTheFamily) {
  struct Case {
    std::int32_t family;
    bool map2;
    std::int16_t record;
    std::int16_t base;
  };
  // With a subclass of 100 the bases differ by family: 100 mod 32, 100 mod 64, always 0.
  const Case cases[] = {{MORLIN, false, 0, 4}, {KELD_PLUS, false, 0, 4}, {KELD, false, 1, 36},
                        {QUILL, false, 2, 0},  {KELD, true, 0, 36},      {QUILL, true, 0, 0}};
  ResetSharedState();
  g_iCalSubclassID = 100;
  for (const Case& c : cases) {
    g_iDFType = c.family;
    g_bUseDataflashMap2 = c.map2;
    EXPECT_EQ(CalBlockIndex(), c.record) << c.family << " " << c.map2;
    EXPECT_EQ(CalDataBase(), c.base) << c.family << " " << c.map2;
  }
  ResetSharedState();
}

}  // namespace
}  // namespace ombrelay
