#include "calibration/calibration_tables.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"

namespace ombrelay {
namespace {

class CalibrationTablesTest : public ::testing::Test {
 protected:
  void SetUp() override { ResetSharedState(); }
  void TearDown() override { ResetSharedState(); }
};

void ExpectField(const MODField& field, const std::string& name, const std::string& type,
                 const std::string& offset, const std::string& value) {
  EXPECT_EQ(field.sName, name);
  EXPECT_EQ(field.sDataType, type) << name;
  EXPECT_EQ(field.sOffset, offset) << name;
  EXPECT_EQ(field.sValue, value) << name;
  EXPECT_EQ(field.sNote, "") << name;
}

TEST_F(CalibrationTablesTest, CalInitFillsTheBlocks) {
  CalInit();
  const auto& blocks = g_atMODBlocks;
  EXPECT_EQ(blocks[0].iCommand, 0x0071);
  EXPECT_EQ(blocks[0].lFieldCount, 6);
  ExpectField(blocks[0].atFields[5], "Pack Voltage", "U2", "10", "0");
  EXPECT_EQ(blocks[1].sName, "Temperatures");
  ExpectField(blocks[1].atFields[6], "FET Temp", "T2", "12", "0");
  // Block 2 skips bytes 16 to 19 and names a slot beyond its count.
  EXPECT_EQ(blocks[2].lFieldCount, 11);
  ExpectField(blocks[2].atFields[9], "TS4", "I2", "20", "0");
  ExpectField(blocks[2].atFields[11], "Bat Voltage", "U2", "24", "0");
  EXPECT_EQ(blocks[2].atFields[12].sName, "");
  EXPECT_FALSE(blocks[3].bActive);
  EXPECT_EQ(blocks[3].lDataCommand, 0x0A);
  ExpectField(blocks[3].atFields[0], "Pack Current", "I2", "0", "0");
  EXPECT_EQ(blocks[3].atFields[0].sUnits, "mA");
  EXPECT_EQ(blocks[4].sName, "");
  EXPECT_EQ(blocks[4].lFieldCount, 0);
  EXPECT_EQ(g_sngFlashReadDelay, 0.02F);
  EXPECT_EQ(g_sngFlashWriteDelay, 0.132F);
}

TEST_F(CalibrationTablesTest, CalInitFillsTheParameterRecords) {
  CalInit();
  const auto& records = g_atCalParameters;
  EXPECT_EQ(records[0].sName, "Calibration");
  EXPECT_EQ(records[0].lDataCommand, 23);
  EXPECT_EQ(records[1].iCommand, 0x0082);
  EXPECT_EQ(records[2].lDataCommand, 35);
  for (const auto& record : records)
    EXPECT_EQ(record.lFieldCount, 15);

  ExpectField(records[0].atFields[2], "Cell Scale 2", "I2", "4", "20520");
  EXPECT_EQ(records[0].atFields[2].sMapName, "ScaleCell0");
  ExpectField(records[0].atFields[7], "Capacity Gain", "F4", "16", "280932.625");
  ExpectField(records[0].atFields[8], "Current Offset", "I2", "20", "-7204");
  EXPECT_EQ(records[0].atFields[11].sUnits, ".1 deg C");
  EXPECT_TRUE(records[0].atFields[13].bInCalData);
  ExpectField(records[0].atFields[15], "Ext 4 Temp Offset", "I1", "30", "0");
  EXPECT_FALSE(records[0].atFields[15].bInCalData);

  ExpectField(records[1].atFields[2], "CC Offset", "I2", "8", "-7000");
  EXPECT_FALSE(records[1].atFields[5].bInCalData);  // Aux Temp Offset
  ExpectField(records[1].atFields[14], "Pack Gain", "U2", "19", "22050");
  ExpectField(records[2].atFields[6], "AFE Pack Gain", "I2", "17", "0");
  ExpectField(records[2].atFields[13], "Ext 4 Temp Offset", "I1", "27", "0");
  ExpectField(records[2].atFields[14], "Battery Gain", "U2", "27", "0");
  for (const auto& record : {records[1], records[2]}) {
    ExpectField(record.atFields[15], "", "", "", "");
  }
}

TEST_F(CalibrationTablesTest, CalInitStartsAfresh) {
  CalInit();
  g_atMODBlocks[1].lFieldCount = 2;
  g_atMODBlocks[0].atFields[3].sName = "---";
  g_atMODBlocks[4].atFields[0].sName = "Stray";
  g_atCalParameters[0].atFields[14].bInCalData = true;
  g_atCalParameters[1].atFields[0].sValue = "1.5";
  g_atCalParameters[2].atFields[15].sValue = "9";
  CalInit();
  EXPECT_EQ(g_atMODBlocks[1].lFieldCount, 7);
  EXPECT_EQ(g_atMODBlocks[0].atFields[3].sName, "Cell Voltage 4");
  EXPECT_EQ(g_atMODBlocks[4].atFields[0].sName, "");
  EXPECT_FALSE(g_atCalParameters[0].atFields[14].bInCalData);
  EXPECT_EQ(g_atCalParameters[1].atFields[0].sValue, "0");
  EXPECT_EQ(g_atCalParameters[2].atFields[15].sValue, "");
}

TEST_F(CalibrationTablesTest, RecordAndBaseFollowTheFamily) {
  struct Case {
    std::int32_t family;
    bool map2;
    std::int16_t record;
    std::int16_t base;
  };
  // With a subclass of 100 the bases differ by family: 100 mod 32, 100 mod 64, always 0.
  const Case cases[] = {{MORLIN, false, 0, 4},  {KELD_PLUS, false, 0, 4}, {KELD, false, 1, 36},
                        {QUILL, false, 2, 0},   {KELD, true, 0, 36},      {QUILL, true, 0, 0},
                        {KELD_PLUS, true, 0, 4}};
  g_iCalSubclassID = 100;
  for (const Case& c : cases) {
    g_iDFType = c.family;
    g_bUseDataflashMap2 = c.map2;
    EXPECT_EQ(CalBlockIndex(), c.record) << c.family << " " << c.map2;
    EXPECT_EQ(CalDataBase(), c.base) << c.family << " " << c.map2;
  }
}

}  // namespace
}  // namespace ombrelay
