#include "config/configuration_section.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "calibration/calibration_tables.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"
#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using testing::SimBench;
using testing::TempAppDir;

constexpr const char* kMorlinLocation =
    "MorlinSystemConfigLocation=Configuration,Registers,Operation Cfg A\n";

// Every setting a section makes, by the config.ini key that sets it, as text.
const std::map<std::string, std::function<std::string()>>& Settings() {
  const auto number = [](const auto& variable) {
    return [&variable] { return std::to_string(variable); };
  };
  const auto text = [](const std::string& variable) { return [&variable] { return variable; }; };
  static const std::map<std::string, std::function<std::string()>> settings = {
      {"calmode", number(g_iCalMode)},
      {"exitCalCommand", number(g_iExitCalCommand)},
      {"outputCalValuesCommand", number(g_iOutputCalValuesCommand)},
      {"outputCalValuesforOffsetCommand", number(g_iOutputCalValuesforOffsetCommand)},
      {"KELDPLUSCALFLAG", number(g_iKeldPlusCalFlag)},
      {"KELDPLUSCALFLAGBITPOS", number(g_iKeldPlusCalFlagBitPos)},
      {"NumSamples", number(g_iNumSamples)},
      {"ZenoMAC", number(g_bZenoMAC)},
      {"IntTSSupported", number(g_bIntTSSupported)},
      {"TS1Supported", number(g_bTS1Supported)},
      {"TS2Supported", number(g_bTS2Supported)},
      {"TS3Supported", number(g_bTS3Supported)},
      {"TS4Supported", number(g_bTS4Supported)},
      {"BatteryVSupported", number(g_bBatteryVSupported)},
      {"PackVSupported", number(g_bPackVSupported)},
      {"ReadAltCellVoltages", number(g_bReadAltCellVoltages)},
      {"RawCalDataBlockSize", number(g_iRawCalDataBlockSize)},
      {"ManuDataCmd", number(g_iManuDataCmd)},
      {"DFAccessFlashCmd", number(g_iDFAccessFlashCmd)},
      {"MorlinSystemConfigParameterLength", number(g_iSystemConfigurationParamLength)},
      {"RemoveCell4onDisplay", number(g_bRemoveCell4onDisplay)},
      {"InternalTSandTS1only", number(g_bInternalTSandTS1only)},
      {"UseDataflashMap2", number(g_bUseDataflashMap2)},
      {"DFType",
       [] {
         constexpr std::array<const char*, 4> kFamilies = {"KELD", "QUILL", "MORLIN", "KELD_PLUS"};
         return std::string(kFamilies.at(static_cast<std::size_t>(g_iDFType)));
       }},
      {"TS1readTemperature", text(g_sTS1ReadCommand)},
      {"TS2readTemperature", text(g_sTS2ReadCommand)},
      {"PackVoltageReadCommand", text(g_sPackVoltageReadCommand)},
      {"SystemConfigAddress", number(g_iSystemConfigAddress)},
      {"CalSubclassID", number(g_iCalSubclassID)},
  };
  return settings;
}

// One section read of a case, and what it must leave.
struct Read {
  std::string header;  // "read D1 result 1", with " map NG" when the map will not load
  std::vector<std::string> boxes;
  std::vector<std::pair<std::string, std::string>> settings;
};
struct Case {
  std::string title;
  std::string file;
  std::vector<Read> reads;
};

// The cases of tests/traces/config/NAME.cases.
std::vector<Case> Cases(const std::string& name) {
  std::ifstream in(std::filesystem::path(OMBRELAY_TRACE_DIR) / "config" / (name + ".cases"));
  std::vector<Case> cases;
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with('#') || (cases.empty() && !line.starts_with("==="))) continue;
    if (line.starts_with("=== ")) {
      cases.push_back({line.substr(4), {}, {}});
    } else if (line.starts_with("--- ")) {
      cases.back().reads.push_back({line.substr(4), {}, {}});
    } else if (cases.back().reads.empty()) {
      cases.back().file += line + "\n";
    } else if (const auto equals = line.find(" ="); equals != std::string::npos) {
      cases.back().reads.back().settings.emplace_back(line.substr(0, equals),
                                                      std::string(Trim(line.substr(equals + 2))));
    } else if (line.starts_with("box ")) {
      cases.back().reads.back().boxes.push_back(line);
    } else if (!Trim(line).empty() && line != "none") {
      ADD_FAILURE() << "what is this line of " << name << ".cases: " << line;
    }
  }
  return cases;
}

// Reads sections of a config.ini written by the test, with the MORLIN sample's map in place.
class ConfigurationSection : public ::testing::Test {
 protected:
  ConfigurationSection() {
    g_sDataFlashMapPath = (dir.Path() / "maps" / "morlin-4D31-2_05.json").string();
  }
  Status Read(const std::string& content, const std::string& section = "D1") {
    dir.Write("config.ini", content);
    return ReadConfigurationSection(section, (dir.Path() / "config.ini").string());
  }

  SimBench bench{std::nullopt};
  TempAppDir dir;
};

TEST_F(ConfigurationSection, EachCaseShowsItsBoxesAndLeavesItsSettings) {
  const std::string mapPath = g_sDataFlashMapPath;
  const std::vector<Case> cases = Cases("sections");
  ASSERT_FALSE(cases.empty());
  for (const Case& c : cases) {
    ResetSharedState();
    g_oPlatform = &bench.platform;
    for (const auto& read : c.reads) {
      SCOPED_TRACE(c.title + ": " + read.header);
      std::istringstream header(read.header);
      std::string verb, section, resultWord, mapWord, map;
      Status result = 0;
      header >> verb >> section >> resultWord >> result >> mapWord >> map;
      g_sDataFlashMapPath = map == "NG" ? "NG" : mapPath;
      bench.Restart();
      EXPECT_EQ(Read(c.file, section), result);
      EXPECT_EQ(bench.trace.Lines(), read.boxes);
      for (const auto& [key, value] : read.settings)
        EXPECT_EQ(Settings().at(key)(), value) << key;
    }
  }
}

TEST_F(ConfigurationSection, MorlinSensorsShapeTheBlockTableForGood) {
  const std::string fewer =
      "TS3Supported=0\nInternalTSandTS1only=1\nPackVSupported=0\nRemoveCell4onDisplay=1\n" +
      std::string(kMorlinLocation);
  CalInit();
  EXPECT_EQ(Read("[D1]\nDFType=KELD\nTS1Supported=0\nTS2Supported=0\n" + fewer), 0);
  EXPECT_EQ(g_atMODBlocks[1].atFields[3].sName, "TS3 Temp") << "only MORLIN changes the table";
  EXPECT_EQ(g_atMODBlocks[0].atFields[4].sName, "Battery Voltage");

  EXPECT_EQ(Read("[D1]\n" + fewer), 0);
  const MODBlock& voltages = g_atMODBlocks[0];
  const MODBlock& temperatures = g_atMODBlocks[1];
  EXPECT_EQ(temperatures.atFields[3].sName, "Cell Temp");
  EXPECT_EQ(temperatures.atFields[3].sOffset, "6");
  EXPECT_EQ(temperatures.atFields[4].sName, "FET Temp");
  EXPECT_EQ(temperatures.atFields[4].sOffset, "8");
  EXPECT_EQ(temperatures.lFieldCount, 2) << "internal and TS1 only";
  EXPECT_EQ(voltages.atFields[3].sName, "---");
  EXPECT_EQ(voltages.atFields[4].sName, "---") << "no battery input by default";
  EXPECT_EQ(voltages.atFields[5].sName, "---");

  // A later section with every sensor cannot bring the fields back.
  EXPECT_EQ(Read("[D1]\nTS3Supported=1\nBatteryVSupported=1\n" + std::string(kMorlinLocation)), 0);
  EXPECT_EQ(temperatures.atFields[3].sName, "Cell Temp");
  EXPECT_EQ(voltages.atFields[4].sName, "---");
}

}  // namespace
}  // namespace ombrelay
