#include "calibration/calibration_tables.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"

namespace ombrelay {
namespace {

// The decoding tests read the tables' types and offsets; what is left is that nothing the
// settings and the decoding change survives the next start-up.
TEST(CalInit, StartsAfresh) {
  ResetSharedState();
  CalInit();
  g_atMODBlocks[1].lFieldCount = 2;
  g_atMODBlocks[0].atFields[5].sName = "---";
  g_atMODBlocks[4].atFields[0].sName = "Stray";
  g_atCalParameters[0].atFields[15].bInCalData = true;
  g_atCalParameters[2].atFields[14].sValue = "9";
  g_atCalParameters[2].atFields[15].sValue = "9";
  CalInit();
  EXPECT_EQ(g_atMODBlocks[1].lFieldCount, 7);
  EXPECT_EQ(g_atMODBlocks[0].atFields[5].sName, "Pack Voltage");
  EXPECT_EQ(g_atMODBlocks[4].atFields[0].sName, "");
  EXPECT_FALSE(g_atCalParameters[0].atFields[15].bInCalData);
  EXPECT_EQ(g_atCalParameters[2].atFields[14].sValue, "0");
  EXPECT_EQ(g_atCalParameters[2].atFields[15].sValue, "");
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
