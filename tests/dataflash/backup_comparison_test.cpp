// Two backups side by side: which parameters and rows differ, and how a change reads.

#include "dataflash/backup_comparison.h"

#include <gtest/gtest.h>

namespace ombrelay {
namespace {

BackupParameter Parameter(const std::string& name, std::int32_t address, const std::string& type,
                          std::vector<std::uint8_t> bytes, const std::string& value) {
  return {"Calibration", "Data", name, address, type, std::move(bytes), value};
}

DataflashBackup Before() {
  DataflashBackup backup;
  backup.identity = {{"4D31", "2_05", "1", "0020"}, "MORLIN", "maps/morlin-4D31-2_05.json"};
  backup.parameters = {Parameter("Pack Gain", 8, "U2", {0xA0, 0x28}, "41000"),
                       Parameter("CC Gain", 12, "F4", {0x80, 0x70, 0x00, 0x00}, "0.938"),
                       Parameter("Board Offset", 24, "I2", {0x00, 0x03}, "3"),
                       Parameter("Retired", 40, "U1", {0x01}, "1")};
  backup.rows[0] = {};
  backup.rows[1] = {};
  return backup;
}

TEST(CompareBackups, ChangedMissingAndAddedParametersAndTheRows) {
  const DataflashBackup before = Before();
  DataflashBackup after = before;
  after.identity.device.buildNumber = "0021";
  after.identity.dataflashMap = "elsewhere/morlin.json";
  after.parameters[0].bytes = {0xA0, 0x29};
  after.parameters[0].value = "41001";
  // A float that reads the same to three decimals, though its bytes differ.
  after.parameters[1].bytes = {0x80, 0x70, 0x00, 0x01};
  after.parameters.erase(after.parameters.begin() + 3);
  after.parameters.push_back(Parameter("Added", 41, "U1", {0x02}, "2"));
  after.rows[0][9] = 0x29;
  after.rows.erase(1);
  after.rows[2] = {};

  const BackupComparison comparison = CompareBackups(before, after);
  EXPECT_EQ(comparison.identity, "build 0020 -> 0021") << "another map file is no other gauge";
  ASSERT_EQ(comparison.parameters.size(), 4U);
  std::vector<std::string> texts;
  for (const ParameterChange& change : comparison.parameters)
    texts.push_back(change.name + ": " + ChangeText(change));
  EXPECT_EQ(texts, (std::vector<std::string>{
                       "Calibration.Data.Pack Gain: 41000 -> 41001",
                       "Calibration.Data.CC Gain: 0.938 -> 0.938 [80700000 -> 80700001]",
                       "Calibration.Data.Retired: 1 -> (none)",
                       "Calibration.Data.Added: (none) -> 2",
                   }));
  EXPECT_EQ(comparison.rows, (std::vector<std::int32_t>{0, 1, 2}));
  EXPECT_EQ(RowsText(comparison.rows), "0, 1, 2");
}

TEST(CompareBackups, APlaceOrTypeOfItsOwnIsAChangeAndTheSameIsNone) {
  const DataflashBackup before = Before();
  EXPECT_TRUE(CompareBackups(before, before).parameters.empty());
  EXPECT_TRUE(CompareBackups(before, before).rows.empty());
  EXPECT_EQ(RowsText({}), "none");

  DataflashBackup moved = before;
  moved.parameters[2].address = 26;
  DataflashBackup retyped = before;
  retyped.parameters[2].type = "U2";
  for (const DataflashBackup& after : {moved, retyped}) {
    const BackupComparison comparison = CompareBackups(before, after);
    ASSERT_EQ(comparison.parameters.size(), 1U);
    EXPECT_EQ(comparison.parameters[0].name, "Calibration.Data.Board Offset");
  }
}

}  // namespace
}  // namespace ombrelay
