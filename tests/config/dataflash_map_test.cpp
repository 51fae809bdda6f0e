#include "config/dataflash_map.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "config/app_directory.h"
#include "config/map_library.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"
#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using nlohmann::json;
using testing::Shown;
using testing::TempAppDir;

constexpr const char* kNoTarget =
    "Data Flash Configuration not found in Quvara installation. Please obtain a version of Quvara "
    "that supports this device and Firmware version. Using this tool on an unsupported device may "
    "destroy it.";
constexpr const char* kNoMapNamed =
    "Data Flash Configuration not found. Please obtain a version of Quvara that supports this "
    "device.";
constexpr const char* kMapRefused =
    "Unrecognized device or cannot find the .encr file for the connected device. This file is "
    "needed to configure the dataflash.";

// A subclass whose parameters lie two bytes apart, each with value "0x0F2<index>".
json Subclass(const std::string& name, int id, const std::vector<std::string>& parameters) {
  json list = json::array();
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    list.push_back({{"name", parameters[i]},
                    {"offset", 2 * i},
                    {"type", "h2"},
                    {"value", "0x0F2" + std::to_string(i)},
                    {"default", "0x0003"}});
  }
  return {{"name", name}, {"id", id}, {"parameters", list}};
}

json Class(const std::string& name, json subclasses) {
  return {{"name", name}, {"subclasses", subclasses}};
}

json Map(json classes) {
  return {{"format", "ombrelay-dataflash-map/1"}, {"classes", classes}};
}

struct Found {
  std::int32_t result = 0;
  std::int32_t id = -1;
  std::int32_t offset = -1;
  std::string value = "-", defaultValue = "-", type = "-";
};

Found Find(const std::string& sClass, const std::string& sSubclass, const std::string& parameter,
           bool silent = false) {
  Found found;
  found.result = FindDFParameter(sClass, sSubclass, parameter, found.id, found.offset, found.value,
                                 found.defaultValue, found.type, silent);
  return found;
}

class DataflashMap : public ::testing::Test {
 protected:
  DataflashMap() {
    g_sDeviceNumber = "4D31";
    g_sFirmwareVersion = "2_05";
  }
  ~DataflashMap() override { UnloadCfgFile(); }

  void WriteTarget(const std::string& targetLines, const json& map) {
    appdir.Write("Quvara.ini", "[Targets]\nB12_1_07=targets/other\n4D31_2_05=targets/t\n");
    appdir.Write("targets/t", "[DataFlash]\n" + targetLines);
    appdir.Write("maps/m.json", map.dump());
  }
  void LoadMap(const json& classes) {
    appdir.Write("map.json", Map(classes).dump());
    ASSERT_EQ(LoadCfgFile((appdir.Path() / "map.json").string()), 0) << MapLoadError();
  }
  std::vector<Shown> TakeBoxes() {
    std::vector<Shown> shown = testing::Boxes(bench.platform);
    bench.platform.ClearMessages();
    return shown;
  }

  TempAppDir appdir{false};
  testing::SimBench bench{std::nullopt, appdir.Path().string()};
  std::string appdirText = appdir.Path().string() + "/";
};

TEST(ApplicationDirectory, IsThePluginFolderWithoutItsName) {
  g_sPluginFolder = "/opt/ombrelay/plugins";
  EXPECT_EQ(ApplicationDirectory(), "/opt/ombrelay/");
  g_sPluginFolder = "plug";
  EXPECT_EQ(ApplicationDirectory(), "");
  ResetSharedState();
}

TEST_F(DataflashMap, LocateFindsTheMapNamedByTheTargetAndLeavesItUnloaded) {
  WriteTarget("Defaults=maps/m.json\n", Map(json::array({Class("Configuration", json::array())})));
  EXPECT_EQ(LocateDataflashMap(), 0);
  EXPECT_EQ(TakeBoxes(), std::vector<Shown>{});
  EXPECT_EQ(g_sDataFlashMapPath, appdirText + "maps/m.json");
  EXPECT_EQ(GetNumClasses(), 0);
}

TEST_F(DataflashMap, LocateReportsAMissingTargetOrMapName) {
  g_sDataFlashMapPath = "maps/m.json";
  EXPECT_EQ(LocateDataflashMap(), 1);  // no Quvara.ini at all
  WriteTarget("Other=maps/m.json\n", Map(json::array()));
  g_sDeviceNumber = g_sFirmwareVersion = "";  // the key "_"
  EXPECT_EQ(LocateDataflashMap(), 1);
  EXPECT_EQ(TakeBoxes(), std::vector<Shown>(2, {kNoTarget, MessageStyle::Error}));
  EXPECT_EQ(g_sDataFlashMapPath, "maps/m.json");

  // Without Defaults the earlier path stands; without one either there is nothing to load.
  g_sDeviceNumber = "4D31";
  g_sFirmwareVersion = "2_05";
  EXPECT_EQ(LocateDataflashMap(), 0);
  EXPECT_EQ(g_sDataFlashMapPath, appdirText + "maps/m.json");
  g_sDataFlashMapPath.clear();
  EXPECT_EQ(LocateDataflashMap(), 1);
  EXPECT_EQ(TakeBoxes(), (std::vector<Shown>{{kNoMapNamed, MessageStyle::Error}}));
}

TEST_F(DataflashMap, LocateMarksARefusedMapNG) {
  WriteTarget("Defaults=maps/m.json\n", json{{"format", "other"}});
  EXPECT_EQ(LocateDataflashMap(), 0);
  EXPECT_EQ(g_sDataFlashMapPath, "NG");
  EXPECT_EQ(TakeBoxes(), (std::vector<Shown>{{kMapRefused, MessageStyle::Plain}}));

  // Defaults is always taken relative to the application directory.
  WriteTarget("Defaults=" + appdirText + "maps/m.json\n", Map(json::array()));
  EXPECT_EQ(LocateDataflashMap(), 0);
  EXPECT_EQ(g_sDataFlashMapPath, "NG");
}

TEST_F(DataflashMap, FindSearchesEveryClassAndSubclassOfTheName) {
  LoadMap(json::array(
      {Class("Configuration", json::array({Subclass("Registers", 64, {"Operation Cfg B"})})),
       Class("Configuration",
             json::array({Subclass("Registers", 320, {"Operation Cfg B"}),
                          Subclass("Power", 352, {"Operation Cfg A"}),
                          Subclass("Registers", 384, {"Operation Cfg B", "Operation Cfg A"})}))}));
  const Found found = Find("Configuration", "Registers", "Operation Cfg A");
  EXPECT_EQ(found.result, 1);
  EXPECT_EQ(found.id, 384);
  EXPECT_EQ(found.offset, 2);
  EXPECT_EQ(found.value, "0x0F21");
  EXPECT_EQ(found.defaultValue, "0x0003");
  EXPECT_EQ(found.type, "H2");
  EXPECT_EQ(Find("Configuration", "Registers", "Operation Cfg B").id, 64);
  EXPECT_EQ(TakeBoxes(), std::vector<Shown>{});
}

TEST_F(DataflashMap, FindComparesExactlyAndReportsAMissUnlessSilent) {
  LoadMap(json::array({Class("Configuration", json::array({Subclass("Registers", 64, {"A"}),
                                                           Subclass("Power", 68, {"B"})})),
                       Class("System Data", json::array({Subclass("Registers", 96, {"C"})}))}));
  const Found miss = Find("Configuration", "Registers", "a");
  EXPECT_EQ(miss.result, kParameterNotFound);
  EXPECT_EQ(miss.id, 68);  // the identifier read last
  EXPECT_EQ(miss.offset, -1);
  EXPECT_EQ(miss.type, "-");
  EXPECT_EQ(TakeBoxes(), (std::vector<Shown>{{"Error: Could not find subclass and offset for "
                                              "Configuration.Registers.a",
                                              MessageStyle::Plain}}));

  EXPECT_EQ(Find("configuration", "Registers", "A", true).result, kParameterNotFound);
  EXPECT_EQ(Find("Configuration", "registers", "A", true).result, kParameterNotFound);
  EXPECT_EQ(TakeBoxes(), std::vector<Shown>{});

  UnloadCfgFile();
  const Found unloaded = Find("Configuration", "Registers", "A", true);
  EXPECT_EQ(unloaded.result, kParameterNotFound);
  EXPECT_EQ(unloaded.id, -1);
}

TEST_F(DataflashMap, AMatchInTheLastClassAMapMayHoldIsFound) {
  json classes = json::array();
  for (int i = 0; i < kMaxMapClasses; ++i)
    classes.push_back(Class("Filler", json::array()));
  classes.back() = Class("Configuration", json::array({Subclass("Registers", 64, {"A"})}));
  LoadMap(classes);
  EXPECT_EQ(Find("Configuration", "Registers", "A").result, kMaxMapClasses - 1);
}

TEST_F(DataflashMap, NamesPassThroughA128CharacterBuffer) {
  const std::string longName(200, 'c');
  LoadMap(json::array({Class(longName, json::array({Subclass("S", 7, {"p"})}))}));
  EXPECT_EQ(MapClassName(0), longName.substr(0, 127));
  EXPECT_EQ(Find(longName, "S", "p", true).result, kParameterNotFound);
  EXPECT_EQ(Find(longName.substr(0, 127), "S", "p", true).result, 0);
}

}  // namespace
}  // namespace ombrelay
