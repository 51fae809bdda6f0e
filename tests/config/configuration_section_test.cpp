#include "config/configuration_section.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "calibration/calibration_tables.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"
#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using testing::SimBench;
using testing::TempAppDir;

constexpr const char* kMorlinLocation =
    "MorlinSystemConfigLocation=Configuration,Registers,Operation Cfg A\n";

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
  std::vector<std::string> Messages() const { return bench.MessageTexts(); }

  SimBench bench{std::nullopt};
  TempAppDir dir;
};

TEST_F(ConfigurationSection, AMinimalMorlinSectionGivesTheDefaults) {
  EXPECT_EQ(Read(std::string("[D1]\nDFType=MORLIN\n") + kMorlinLocation), 0);
  EXPECT_TRUE(Messages().empty());
  EXPECT_EQ(g_iDFType, MORLIN);
  EXPECT_EQ(g_iCalMode, 0x2D);
  EXPECT_EQ(g_iExitCalCommand, -3968);
  EXPECT_EQ(g_iOutputCalValuesCommand, -3967);
  EXPECT_EQ(g_iOutputCalValuesforOffsetCommand, -3966);
  EXPECT_EQ(g_iKeldPlusCalFlag, 0x74);
  EXPECT_EQ(g_iKeldPlusCalFlagBitPos, 16);
  EXPECT_EQ(g_iNumSamples, 4);
  EXPECT_EQ(g_bZenoMAC, 0);
  EXPECT_TRUE(g_bIntTSSupported && g_bTS1Supported && g_bTS2Supported && g_bPackVSupported);
  EXPECT_FALSE(g_bTS3Supported || g_bTS4Supported || g_bBatteryVSupported ||
               g_bReadAltCellVoltages || g_bRemoveCell4onDisplay || g_bInternalTSandTS1only ||
               g_bUseDataflashMap2);
  EXPECT_EQ(g_iRawCalDataBlockSize, 26);
  EXPECT_EQ(g_iManuDataCmd, 35);
  EXPECT_EQ(g_iDFAccessFlashCmd, 47);
  EXPECT_EQ(g_iSystemConfigurationParamLength, 2);
  // Configuration/Registers starts at 320 in the sample map, "Operation Cfg A" at offset 0.
  EXPECT_EQ(g_iSystemConfigAddress, 320);
  EXPECT_EQ(g_iCalSubclassID, 0);
  // MORLIN never reads the read commands.
  EXPECT_TRUE(g_sTS1ReadCommand.empty() && g_sPackVoltageReadCommand.empty());
}

TEST_F(ConfigurationSection, ALaterSectionResetsNumbersButKeepsReadCommandsAndFamily) {
  const std::string file =
      "[D1]\nDFType= keld_plus \nNumSamples=9\nTS2Supported=0\n" + std::string(kMorlinLocation) +
      "TS1readTemperature=sbs, 72\nPackVoltageReadCommand=MAC,90\n"
      "[D1_2]\nDFType=\nTS2Supported=0\n" +
      kMorlinLocation + "[D1_3]\nTS2Supported=0\nTS1readTemperature=SBS,60\n" + kMorlinLocation;
  EXPECT_EQ(Read(file, "D1"), 0);
  EXPECT_EQ(g_iDFType, KELD_PLUS);
  EXPECT_EQ(g_iNumSamples, 9);
  EXPECT_EQ(g_sTS1ReadCommand, "SBS, 72");

  EXPECT_EQ(Read(file, "D1_2"), 0) << Messages().front();
  EXPECT_EQ(g_iDFType, KELD_PLUS) << "an empty DFType keeps the family";
  EXPECT_EQ(g_iNumSamples, 4) << "a key missing in the later section is back at its default";
  EXPECT_EQ(g_sTS1ReadCommand, "SBS, 72");
  EXPECT_EQ(g_sPackVoltageReadCommand, "MAC,90");
  EXPECT_TRUE(Messages().empty());

  // A missing DFType counts as MORLIN, which neither reads nor checks read commands.
  EXPECT_EQ(Read(file, "D1_3"), 0);
  EXPECT_EQ(g_iDFType, MORLIN);
  EXPECT_EQ(g_sTS1ReadCommand, "SBS, 72");
}

TEST_F(ConfigurationSection, ReadCommandsAreCheckedForFormatAndRange) {
  struct Case {
    std::string lines;
    std::string message;  // empty when the section passes
  };
  const std::string keld = "[D1]\nDFType=KELD\nTS2Supported=0\n";
  const std::vector<Case> cases = {
      {"TS1readTemperature=FOO,20\nPackVoltageReadCommand=SBS,17\n", ""},
      {"TS1readTemperature=SBS,7\nPackVoltageReadCommand=SBS,200\n", ""},
      {"TS1readTemperature=SBS,6\n",
       "Command value for key TS1readTemperature is out of range. Please check key value in "
       "application directory in file config.ini."},
      {"TS1readTemperature=SBS,72\nPackVoltageReadCommand=SBS,16\n",
       "Command value for key PackVoltageReadCommand is out of range. Please check key value in "
       "application directory in file config.ini."},
      {"TS1readTemperature=SBS72\n",
       "Check format of value contained in key TS1readTemperature in application directory in "
       "config.ini file."},
      {"TS1readTemperature=SBS,72\nPackVoltageReadCommand=SBS 90\n",
       "Check format of value contained in key PackVoltageReadCommand  in application directory "
       "in config.ini file."},
      {"TS1readTemperature=SBS,x\n",
       "General Error reading configuration file. Error returned was Type mismatch"},
      {"TS1readTemperature=MAC SBS\n",
       "General Error reading configuration file. Error returned was Subscript out of range"},
      // The number is the 16-bit command it will be at use, fractions rounded half to even.
      {"TS1readTemperature=SBS,40000\n",
       "General Error reading configuration file. Error returned was Overflow"},
      {"TS1readTemperature=SBS,6.5\n",
       "Command value for key TS1readTemperature is out of range. Please check key value in "
       "application directory in file config.ini."},
      {"TS1readTemperature=SBS,200.5\n", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.lines);
    bench.platform.ClearMessages();
    g_sTS1ReadCommand.clear();
    g_sPackVoltageReadCommand.clear();
    EXPECT_EQ(Read(keld + c.lines), c.message.empty() ? 0 : 1);
    EXPECT_EQ(Messages(),
              c.message.empty() ? std::vector<std::string>{} : std::vector<std::string>{c.message});
  }
}

TEST_F(ConfigurationSection, TS1IsCheckedOnQuillEvenWithoutTheSensor) {
  const std::string lines = "TS1Supported=0\nTS2Supported=0\n";
  EXPECT_EQ(Read("[D1]\nDFType=KELD\n" + lines), 0);
  EXPECT_TRUE(Messages().empty());

  EXPECT_EQ(Read("[D1]\nDFType=QUILL\nCCOffsetSampleLocation=x\n" + lines), 1);
  EXPECT_EQ(Messages(),
            std::vector<std::string>{"Check format of value contained in key TS1readTemperature in "
                                     "application directory in config.ini file."});
}

TEST_F(ConfigurationSection, NumbersThatDoNotFitEndInTheGeneralError) {
  const std::string general = "General Error reading configuration file. Error returned was ";
  EXPECT_EQ(Read("[D1]\nNumSamples=7\nexitCalCommand=61568\n" + std::string(kMorlinLocation)), 1);
  EXPECT_EQ(Messages(), std::vector<std::string>{general + "Overflow"});
  EXPECT_EQ(g_iNumSamples, 0) << "keys are read in their order; NumSamples comes later";
  EXPECT_EQ(g_iCalMode, 0x2D) << "what was read before the failure stays";

  bench.platform.ClearMessages();
  EXPECT_EQ(Read("[D1]\nZenoMAC=256\n" + std::string(kMorlinLocation)), 1);
  EXPECT_EQ(Messages(), std::vector<std::string>{general + "Overflow"});
  EXPECT_EQ(Read("[D1]\nZenoMAC=255\n" + std::string(kMorlinLocation)), 0);
  EXPECT_EQ(g_bZenoMAC, 255);
}

TEST_F(ConfigurationSection, FewerThanOneSampleIsRefusedAndNotTaken) {
  const std::string refused =
      "Value of key NumSamples is below 1. A raw calibration capture needs at least one sample. "
      "Please check key value in application directory in file config.ini. Do not proceed with "
      "calibration until this is resolved.";
  g_iNumSamples = 6;
  for (const char* value : {"0", "-3"}) {
    bench.platform.ClearMessages();
    g_iDFType = KELD;
    EXPECT_EQ(
        Read("[D1]\nNumSamples=" + std::string(value) + "\nDFType=MORLIN\n" + kMorlinLocation), 1);
    EXPECT_EQ(Messages(), std::vector<std::string>{refused});
    EXPECT_EQ(g_iNumSamples, 6);
    EXPECT_EQ(g_iDFType, KELD) << "the section stops there";
  }
  // A line without '=' is no key: the default stands.
  EXPECT_EQ(Read("[D1]\nNumSamples:0\nDFType:KELD\n" + std::string(kMorlinLocation)), 0);
  EXPECT_EQ(g_iNumSamples, 4);
  EXPECT_EQ(g_iDFType, MORLIN);
}

TEST_F(ConfigurationSection, ParameterLengthAboveTwoIsReportedAndKept) {
  EXPECT_EQ(Read("[D1]\nMorlinSystemConfigParameterLength=3\n" + std::string(kMorlinLocation)), 0);
  EXPECT_EQ(Messages(), std::vector<std::string>{
                            "Allowed values for g_iSystemConfigurationParamLength are 1 or 2. "
                            "Please check value in config.ini"});
  EXPECT_EQ(g_iSystemConfigurationParamLength, 3);
}

TEST_F(ConfigurationSection, FailuresOfTheFamilyAndTheSystemConfigurationLocation) {
  struct Case {
    std::string content;
    std::vector<std::string> messages;
  };
  const std::vector<Case> cases = {
      {"[D1]\nDFType=BOGUS\n",
       {"Device Dataflash configuration type not found in configuration file.  Please do not "
        "proceed with calibration until this is resolved. Check DFType key in application "
        "directory in file config.ini."}},
      {"[D1]\nDFType=MORLIN\n",
       {"Location of base System Configuration address name not found. Check entry in Quvara "
        "application directory in file config.ini."}},
      {"[D1]\nMorlinSystemConfigLocation=Configuration,,Operation Cfg A\n",
       {"Error reading Morlin System Configuration Location in configuration file. Please do not "
        "proceed with calibration until this is resolved."}},
      {"[D1]\nMorlinSystemConfigLocation=Configuration,Registers\n",
       {"General Error reading configuration file. Error returned was Subscript out of range"}},
      {"[D1]\nMorlinSystemConfigLocation=Configuration,Registers,No Such\n",
       {"Error: Could not find subclass and offset for Configuration.Registers.No Such",
        "Not able to Columb Counter Offset location."}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.content);
    bench.platform.ClearMessages();
    g_iSystemConfigAddress = 77;
    EXPECT_EQ(Read(c.content), 1);
    EXPECT_EQ(Messages(), c.messages);
    EXPECT_EQ(g_iSystemConfigAddress, 77) << "an earlier section's address survives a stop";
  }
}

// Where two checks fail at once, the earlier one speaks first, and it alone when it stops the
// section.
TEST_F(ConfigurationSection, TwoFaultsAtOnceAreReportedInTheOrderOfTheChecks) {
  const std::string paramLength =
      "Allowed values for g_iSystemConfigurationParamLength are 1 or 2. Please check value in "
      "config.ini";
  const std::string samples =
      "Value of key NumSamples is below 1. A raw calibration capture needs at least one sample. "
      "Please check key value in application directory in file config.ini. Do not proceed with "
      "calibration until this is resolved.";
  const std::string family =
      "Device Dataflash configuration type not found in configuration file.  Please do not "
      "proceed with calibration until this is resolved. Check DFType key in application "
      "directory in file config.ini.";
  const std::string overflow =
      "General Error reading configuration file. Error returned was Overflow";
  const std::string sampleLocation =
      "Location of base CC Offset Samples parameter name not found for Quill style device. Check "
      "key name CCOffsetSampleLocation in application directory in file named config.ini.  Check "
      "entry in Quvara application directory in file config.ini.";
  const std::string systemLocation =
      "Location of base System Configuration address name not found. Check entry in Quvara "
      "application directory in file config.ini.";
  const auto format = [](const std::string& key, const char* gap) {
    return "Check format of value contained in key " + key + gap +
           "in application directory in config.ini file.";
  };
  const auto range = [](const std::string& key) {
    return "Command value for key " + key +
           " is out of range. Please check key value in application directory in file "
           "config.ini.";
  };
  const std::string noMap = "Can not open Dataflash configuration file. Please reinstall Quvara.";
  const std::string badLocation =
      "Error reading Morlin System Configuration Location in configuration file. Please do not "
      "proceed with calibration until this is resolved.";
  const std::string notFound =
      "Error: Could not find subclass and offset for Configuration.Registers.Operation Cfg A";
  const std::string noAddress = "Not able to Columb Counter Offset location.";

  struct Case {
    std::string lines;
    std::vector<std::string> messages;
    bool mapLoads = true;
  };
  const std::string keld = "DFType=KELD\n";
  const std::vector<Case> cases = {
      {"MorlinSystemConfigParameterLength=3\nNumSamples=0\n", {paramLength, samples}},
      {"MorlinSystemConfigParameterLength=3\nDFType=BOGUS\n", {paramLength, family}},
      {"NumSamples=0\nDFType=BOGUS\n", {samples}},
      {"exitCalCommand=61568\nDFType=BOGUS\n", {overflow}},
      {"DFType=QUILL\nTS1readTemperature=SBS72\n",
       {sampleLocation, format("TS1readTemperature", " ")}},
      {"DFType=QUILL\nTS1readTemperature=SBS,72\nTS2readTemperature=SBS,73\n",
       {sampleLocation, noMap},
       false},
      {"DFType=KELD_PLUS\nTS1readTemperature=SBS72\n", {systemLocation}},
      {keld + "PackVoltageReadCommand=SBS 90\nTS1readTemperature=SBS72\n",
       {format("PackVoltageReadCommand", "  ")}},
      {keld + "PackVoltageReadCommand=SBS,16\nTS1readTemperature=SBS,6\n",
       {range("PackVoltageReadCommand")}},
      {keld + "TS1readTemperature=SBS,6\nTS2readTemperature=SBS72\n",
       {range("TS1readTemperature")}},
      // Without a pack input its command is not checked; TS2's is, and it stops before the map.
      {keld + "PackVSupported=0\nPackVoltageReadCommand=SBS 90\nTS1readTemperature=SBS,72\n"
              "TS2readTemperature=SBS,6\n",
       {range("TS2readTemperature")},
       false},
      {"MorlinSystemConfigLocation=Configuration,,Operation Cfg A\n", {noMap, badLocation}, false},
      {kMorlinLocation, {noMap, notFound, noAddress}, false},
  };
  const std::string mapPath = g_sDataFlashMapPath;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.lines);
    bench.platform.ClearMessages();
    g_sTS1ReadCommand.clear();
    g_sTS2ReadCommand.clear();
    g_sDataFlashMapPath = c.mapLoads ? mapPath : "NG";
    EXPECT_EQ(Read("[D1]\n" + c.lines), 1);
    std::vector<testing::Shown> expected;
    for (const std::string& message : c.messages)
      expected.push_back({message, MessageStyle::Plain});
    EXPECT_EQ(testing::Boxes(bench.platform), expected);
  }
}

TEST_F(ConfigurationSection, AQuillSectionWithoutSampleLocationGoesOnAfterItsMessage) {
  EXPECT_EQ(Read("[D1]\nDFType=QUILL\nTS1readTemperature=MAC,72\nTS2readTemperature=MAC,73\n"), 1);
  EXPECT_EQ(Messages(),
            std::vector<std::string>{
                "Location of base CC Offset Samples parameter name not found for Quill style "
                "device. Check key name CCOffsetSampleLocation in application directory in file "
                "named config.ini.  Check entry in Quvara application directory in file "
                "config.ini."});
  EXPECT_EQ(g_sTS2ReadCommand, "MAC,73") << "the section goes on after the message";
}

TEST_F(ConfigurationSection, AMapThatWillNotLoadIsReportedAndTheLocationThenFindsNothing) {
  g_sDataFlashMapPath = "NG";
  EXPECT_EQ(Read("[D1]\n" + std::string(kMorlinLocation)), 1);
  ASSERT_EQ(Messages().size(), 3U);
  EXPECT_EQ(Messages()[0], "Can not open Dataflash configuration file. Please reinstall Quvara.");
  EXPECT_EQ(Messages()[2], "Not able to Columb Counter Offset location.");
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
