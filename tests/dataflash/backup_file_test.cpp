// Backup files: what is written reads back the same, and a file with any flaw is refused whole,
// with the flaw named.

#include "dataflash/backup_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "dataflash/dataflash_operations.h"
#include "tests/support/sim_bench.h"
#include "tests/support/test_file.h"

namespace ombrelay {
namespace {

using json = nlohmann::ordered_json;

class BackupFileTest : public ::testing::Test {
 protected:
  BackupFileTest() {
    testing::SimBench bench(sim::Family::Morlin);
    backup = BackupGauge(bench.host, bench.platform).backup;
  }
  ~BackupFileTest() override { std::filesystem::remove(path); }

  std::optional<DataflashBackup> WriteAndRead(const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
    return ReadBackupFile(path, failure);
  }

  json Written() {
    std::string why;
    EXPECT_TRUE(WriteBackupFile(path, backup, why)) << why;
    return json::parse(std::ifstream(path));
  }

  DataflashBackup backup;
  const std::string path = testing::TestFile("backup.json");
  std::string failure;
};

TEST_F(BackupFileTest, WhatIsWrittenReadsBackTheSame) {
  ASSERT_EQ(backup.parameters.size(), 54U);
  const json written = Written();
  EXPECT_EQ(written["format"], "ombrelay-dataflash-backup/1");
  EXPECT_EQ(written["gauge"], json({{"device", "4D31"},
                                    {"firmware", "2_05"},
                                    {"firmware_type", "1"},
                                    {"build", "0020"},
                                    {"family", "MORLIN"},
                                    {"dataflash_map", "maps/morlin-4D31-2_05.json"}}));
  EXPECT_EQ(written["parameters"]["Calibration"]["Data"]["Current Offset"],
            json({{"address", 20}, {"type", "I2"}, {"bytes", "E3EA"}, {"value", "-7190"}}));
  EXPECT_EQ(written["parameters"]["Configuration"]["Registers"]["Operation Cfg A"]["value"],
            "0x0F2A");
  EXPECT_EQ(written["rows"]["0"],
            "5000500050005000500050008070000093098000E3EA00400003000000000000");

  const std::optional<DataflashBackup> read = ReadBackupFile(path, failure);
  ASSERT_TRUE(read) << failure;
  EXPECT_EQ(read->identity, backup.identity);
  EXPECT_EQ(read->parameters, backup.parameters) << "the map's order is kept";
  EXPECT_EQ(read->rows, backup.rows);
}

TEST_F(BackupFileTest, AFlawedFileIsRefusedWithItsFlaw) {
  struct Flaw {
    std::function<void(json&)> make;
    std::string why;
  };
  const auto scale = [](json& root) -> json& {
    return root["parameters"]["Calibration"]["Data"]["Cell Scale 0"];
  };
  const std::string inScale = "parameters: \"Calibration\": \"Data\": \"Cell Scale 0\": ";
  const std::vector<Flaw> flaws = {
      {[](json& root) { root = json::array(); }, "not an object"},
      {[](json& root) { root["format"] = "ombrelay-dataflash-map/1"; },
       "format is not ombrelay-dataflash-backup/1"},
      {[](json& root) { root.erase("gauge"); }, "gauge is missing"},
      {[](json& root) { root["gauge"] = "MORLIN"; }, "gauge is not an object"},
      {[](json& root) { root["gauge"]["device"] = 0x4D31; }, "gauge: device is not a text"},
      {[](json& root) { root["gauge"]["family"] = "KELD"; },
       "gauge: family is not MORLIN or KELD_PLUS: \"KELD\""},
      {[](json& root) { root.erase("parameters"); }, "parameters is missing"},
      {[](json& root) { root["parameters"]["Calibration"] = json::array(); },
       "parameters: \"Calibration\": is not an object"},
      {[&](json& root) { scale(root) = "5000"; }, inScale + "is not an object"},
      {[&](json& root) { scale(root).erase("address"); }, inScale + "address is missing"},
      {[&](json& root) { scale(root)["address"] = -2; },
       inScale + "address is not an integer from 0 to 65534"},
      {[&](json& root) { scale(root)["address"] = 65535; },
       inScale + "address is not an integer from 0 to 65534"},
      {[&](json& root) { scale(root)["type"] = "Q7"; },
       inScale + "type \"Q7\" is not one of known size"},
      {[&](json& root) { scale(root)["bytes"] = "50"; }, inScale + "bytes is not 2 bytes in hex"},
      {[&](json& root) { scale(root)["bytes"] = "50 0"; }, inScale + "bytes is not 2 bytes in hex"},
      {[&](json& root) {
         scale(root)["bytes"] = json::array({0x50, 0});
       },
       inScale + "bytes is not a text"},
      {[&](json& root) { scale(root)["value"] = "20481"; },
       inScale + "value \"20481\" is not what its bytes give, \"20480\""},
      {[&](json& root) {
         scale(root)["bytes"] = "5001";
         scale(root)["value"] = "20481";
       },
       "parameters: Calibration.Data.Cell Scale 0: bytes are not those its rows hold, 5000"},
      {[](json& root) { root["rows"].erase("17"); }, "rows: row 17 is missing"},
      {[](json& root) { root["rows"]["5"] = std::string(64, 'F'); },
       "rows: row 5 holds no parameter"},
      {[](json& root) { root["rows"]["00"] = root["rows"]["0"]; },
       "rows: \"00\" is not a row number from 0 to 2047"},
      {[](json& root) { root["rows"]["2048"] = root["rows"]["0"]; },
       "rows: \"2048\" is not a row number from 0 to 2047"},
      {[](json& root) { root["rows"]["0"] = "5000"; }, "rows: 0 is not 32 bytes in hex"},
      {[](json& root) {
         root["parameters"] = json::object();
         root["rows"] = json::object();
       },
       "parameters: there are none"},
      // Texts from the file are cut in messages, never inside a character.
      {[](json& root) { root["gauge"]["family"] = std::string(63, 'x') + "\xC3\xA9" + "tail"; },
       "gauge: family is not MORLIN or KELD_PLUS: \"" + std::string(63, 'x') + "...\""},
  };
  const json written = Written();
  for (const Flaw& flaw : flaws) {
    json root = written;
    flaw.make(root);
    failure.clear();
    EXPECT_FALSE(WriteAndRead(root.dump()));
    EXPECT_EQ(failure, "the backup " + path + " is refused: " + flaw.why);
  }

  EXPECT_FALSE(WriteAndRead("{\"format\": "));
  EXPECT_EQ(failure, "the backup " + path + " is refused: not JSON");
  EXPECT_FALSE(ReadBackupFile(path + ".missing", failure));
  EXPECT_EQ(failure, "the backup " + path + ".missing is refused: not a file");
}

TEST_F(BackupFileTest, AnUnwritableFileIsSaid) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  EXPECT_FALSE(WriteBackupFile(folder, backup, failure));
  EXPECT_EQ(failure, "the backup cannot be written to " + folder);
}

}  // namespace
}  // namespace ombrelay
