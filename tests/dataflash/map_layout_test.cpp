// The map as a backup lays it out: absolute addresses, sizes by type, and the maps a backup
// cannot be taken by.

#include "dataflash/map_layout.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "shell/shared_state.h"
#include "tests/support/test_file.h"

namespace ombrelay {
namespace {

class MapLayoutTest : public ::testing::Test {
 protected:
  ~MapLayoutTest() override {
    std::filesystem::remove(path);
    ResetSharedState();
  }

  // A map of one class whose subclasses are given, each as its JSON text.
  bool Layout(const std::string& subclasses) {
    std::ofstream(path) << R"({"format": "ombrelay-dataflash-map/1", "classes": [
        {"name": "Gas Gauging", "subclasses": [)"
                        << subclasses << "]}]}";
    g_sDataFlashMapPath = path;
    return ReadMapLayout(parameters, failure);
  }

  static std::string Parameter(const std::string& name, int offset, const std::string& type) {
    return R"({"name": ")" + name + R"(", "offset": )" + std::to_string(offset) + R"(, "type": ")" +
           type + R"(", "value": "0", "default": "0"})";
  }

  const std::string path = testing::TestFile("map.json");
  std::vector<BackupParameter> parameters;
  std::string failure;
};

TEST_F(MapLayoutTest, AddressesAreIdentifierPlusOffsetInTheMapsOrder) {
  ASSERT_TRUE(Layout(R"({"name": "State", "id": 608, "parameters": [)" +
                     Parameter("Qmax", 31, "i2") + "," + Parameter("Chem ID", 0, "H2") + "," +
                     Parameter("Qmax", 4, "U1") + R"(]},
      {"name": "State", "id": 640, "parameters": [)" +
                     Parameter("Update Status", 0, "S12") + "]}"))
      << failure;
  ASSERT_EQ(parameters.size(), 3U);
  EXPECT_EQ(ParameterName(parameters[0]), "Gas Gauging.State.Qmax");
  EXPECT_EQ(parameters[0].address, 639);
  EXPECT_EQ(parameters[0].type, "I2") << "folded as the map reader folds it";
  EXPECT_EQ(parameters[1].address, 608);
  // The second Qmax repeats the first's names and is left out; the second State is kept.
  EXPECT_EQ(ParameterName(parameters[2]), "Gas Gauging.State.Update Status");
  EXPECT_EQ(parameters[2].address, 640);
  // Qmax at 639 spans rows 19 and 20; Chem ID lies in row 19, Update Status in row 20 only.
  EXPECT_EQ(RowsOf(parameters), (std::set<std::int32_t>{19, 20}));
  EXPECT_EQ(RowsOf(std::span(parameters).subspan(2)), (std::set<std::int32_t>{20}));
}

TEST_F(MapLayoutTest, AMapABackupCannotBeTakenByIsRefused) {
  EXPECT_FALSE(Layout(R"({"name": "State", "id": 0, "parameters": [)" + Parameter("Qmax", 0, "I2") +
                      "," + Parameter("Cycle", 2, "U4") + "]}"));
  EXPECT_EQ(failure,
            "the dataflash map gives Gas Gauging.State.Cycle the type \"U4\", whose size is not "
            "known");
  EXPECT_FALSE(Layout(R"({"name": "Top", "id": 65535, "parameters": [)" +
                      Parameter("Last", 0, "U1") + "," + Parameter("Over", 1, "U1") + "]}"));
  EXPECT_EQ(failure,
            "the dataflash map places Gas Gauging.Top.Over at 65536, past the last address 65535");
  EXPECT_TRUE(
      Layout(R"({"name": "Top", "id": 65534, "parameters": [)" + Parameter("Last", 0, "I2") + "]}"))
      << failure;

  g_sDataFlashMapPath = path + ".missing";
  EXPECT_FALSE(ReadMapLayout(parameters, failure));
  EXPECT_EQ(failure, "the dataflash map " + path + ".missing does not load: not a file");
}

}  // namespace
}  // namespace ombrelay
