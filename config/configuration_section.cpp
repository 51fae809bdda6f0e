#include "config/configuration_section.h"

#include <cstdint>
#include <optional>
#include <string_view>

#include "config/dataflash_map.h"
#include "config/map_library.h"
#include "config/profile.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

// Text values may be 2046 characters long.
constexpr std::int32_t kValueBufferSize = 2047;

class SectionReader {
 public:
  SectionReader(const std::string& section, const std::string& path)
      : section_(section), path_(path) {}

  std::int32_t Int(const char* key, std::int32_t defaultValue) const {
    return GetPrivateProfileIntA(section_, key, defaultValue, path_);
  }
  std::int16_t Int16(const char* key, std::int16_t defaultValue) const {
    return ToInt16(Int(key, defaultValue));
  }
  bool Flag(const char* key, bool defaultValue) const { return Int(key, defaultValue) != 0; }
  // Empty when the key is missing or empty and there is no default.
  std::string Text(const char* key, const std::string& defaultValue = {}) const {
    std::string value;
    GetPrivateProfileStringA(section_, key, defaultValue, value, kValueBufferSize, path_);
    return value;
  }

 private:
  const std::string& section_;
  const std::string& path_;
};

// False after its message when the section holds a number that no capture can work with; the
// refused number is not taken.
bool ReadNumbersAndFlags(const SectionReader& ini) {
  g_iCalMode = ini.Int16("calmode", 0x2D);
  g_iExitCalCommand = ini.Int16("exitCalCommand", -3968);
  g_iOutputCalValuesCommand = ini.Int16("outputCalValuesCommand", -3967);
  g_iOutputCalValuesforOffsetCommand = ini.Int16("outputCalValuesforOffsetCommand", -3966);
  g_iKeldPlusCalFlag = ini.Int16("KELDPLUSCALFLAG", 0x74);
  g_iKeldPlusCalFlagBitPos = ini.Int16("KELDPLUSCALFLAGBITPOS", 16);
  const std::int16_t numSamples = ini.Int16("NumSamples", 4);
  g_bZenoMAC = ToByte(ini.Int("ZenoMAC", 0));
  g_bIntTSSupported = ini.Flag("IntTSSupported", true);
  g_bTS1Supported = ini.Flag("TS1Supported", true);
  g_bTS2Supported = ini.Flag("TS2Supported", true);
  g_bTS3Supported = ini.Flag("TS3Supported", false);
  g_bTS4Supported = ini.Flag("TS4Supported", false);
  g_bBatteryVSupported = ini.Flag("BatteryVSupported", false);
  g_bPackVSupported = ini.Flag("PackVSupported", true);
  g_bReadAltCellVoltages = ini.Flag("ReadAltCellVoltages", false);
  g_iRawCalDataBlockSize = ini.Int16("RawCalDataBlockSize", 0x1A);
  g_iManuDataCmd = ini.Int16("ManuDataCmd", 0x23);
  g_iDFAccessFlashCmd = ini.Int16("DFAccessFlashCmd", 0x2F);
  g_iSystemConfigurationParamLength = ini.Int16("MorlinSystemConfigParameterLength", 2);
  g_bRemoveCell4onDisplay = ini.Flag("RemoveCell4onDisplay", false);
  g_bInternalTSandTS1only = ini.Flag("InternalTSandTS1only", false);
  g_bUseDataflashMap2 = ini.Flag("UseDataflashMap2", false);
  if (g_iSystemConfigurationParamLength > 2) {
    MsgBox(
        "Allowed values for g_iSystemConfigurationParamLength are 1 or 2. Please check value in "
        "config.ini");
  }
  // A raw capture averages over this many readings: none would divide by zero.
  if (numSamples < 1) {
    MsgBox(
        "Value of key NumSamples is below 1. A raw calibration capture needs at least one sample. "
        "Please check key value in application directory in file config.ini. Do not proceed with "
        "calibration until this is resolved.");
    return false;
  }
  g_iNumSamples = numSamples;
  return true;
}

std::optional<std::int32_t> FamilyNamed(std::string_view word) {
  for (std::size_t i = 0; i < kFamilyNames.size(); ++i) {
    if (word == kFamilyNames[i]) return static_cast<std::int32_t>(i);
  }
  return std::nullopt;
}

// False after its message when the family is none of the four; an empty value keeps the
// earlier section's.
bool ReadFamily(const SectionReader& ini) {
  const std::string value = ini.Text("DFType", "Morlin");
  if (value.empty()) return true;
  const auto family = FamilyNamed(ToUpper(Trim(value)));
  if (!family) {
    MsgBox(
        "Device Dataflash configuration type not found in configuration file.  Please do not "
        "proceed with calibration until this is resolved. Check DFType key in application "
        "directory in file config.ini.");
    return false;
  }
  g_iDFType = *family;
  return true;
}

// A non-empty value replaces the command; an empty one leaves the earlier section's.
void ReadCommand(const SectionReader& ini, const char* key, std::string& command) {
  const std::string value = ini.Text(key);
  if (!value.empty()) command = ToUpper(value);
}

constexpr const char* kPackVoltageKey = "PackVoltageReadCommand";

// A read command is "MAC" or "SBS", a comma and a command number within the given limits.
// False after its message when it is not.
bool ValidateReadCommand(const std::string& command, const std::string& key, int low, int high) {
  const bool hasBothSources =
      command.find("MAC") != std::string::npos && command.find("SBS") != std::string::npos;
  if (command.find(',') == std::string::npos && !hasBothSources) {
    const std::string gap = key == kPackVoltageKey ? "  " : " ";
    MsgBox("Check format of value contained in key " + key + gap +
           "in application directory in config.ini file.");
    return false;
  }
  const std::vector<std::string> pieces = Split(command, ',');
  if (pieces.size() < 2) throw RuntimeError(kSubscriptOutOfRange);
  // The same 16-bit conversion as when the command is used: what passes here is what is sent.
  const std::int16_t number = TextToInt16(pieces[1]);
  if (number < low || number > high) {
    MsgBox("Command value for key " + key +
           " is out of range. Please check key value in application directory in file "
           "config.ini.");
    return false;
  }
  return true;
}

// The absolute dataflash address of the System Configuration parameter named by location, from
// the loaded map. False after its message when it cannot be found; the map then stays loaded
// when the location itself was at fault.
bool LocateSystemConfiguration(const std::string& location) {
  const std::vector<std::string> pieces = Split(location, ',');
  if (pieces.size() < 3) throw RuntimeError(kSubscriptOutOfRange);
  if (pieces[0].empty() || pieces[1].empty() || pieces[2].empty()) {
    MsgBox(
        "Error reading Morlin System Configuration Location in configuration file. Please do "
        "not proceed with calibration until this is resolved.");
    return false;
  }
  std::int32_t subclassId = 0;
  std::int32_t offset = 0;
  std::string value, defaultValue, type;
  if (FindDFParameter(std::string(Trim(pieces[0])), std::string(Trim(pieces[1])),
                      std::string(Trim(pieces[2])), subclassId, offset, value, defaultValue, type,
                      false) == kParameterNotFound) {
    MsgBox("Not able to Columb Counter Offset location.");
    UnloadCfgFile();
    return false;
  }
  g_iSystemConfigAddress = ToInt16(static_cast<double>(subclassId) + offset);
  return true;
}

MODField TemperatureField(const char* name, const char* offset) {
  MODField field;
  field.sName = name;
  field.sDataType = "T2";
  field.sOffset = offset;
  field.sUnits = "degC";
  field.sValue = "0";
  return field;
}

// MORLIN shows fewer fields, by its sensors; the changes stay for the rest of the session.
void ApplyMorlinBlockChanges() {
  MODBlock& voltages = g_atMODBlocks[0];
  MODBlock& temperatures = g_atMODBlocks[1];
  if (!g_bTS3Supported) {
    temperatures.atFields[3] = TemperatureField("Cell Temp", "6");
    temperatures.atFields[4] = TemperatureField("FET Temp", "8");
    temperatures.lFieldCount = 5;
  }
  if (g_bInternalTSandTS1only) temperatures.lFieldCount = 2;
  if (!g_bBatteryVSupported) voltages.atFields[4].sName = "---";
  if (!g_bPackVSupported) voltages.atFields[5].sName = "---";
  if (g_bRemoveCell4onDisplay) voltages.atFields[3].sName = "---";
}

Status ReadSection(const SectionReader& ini) {
  Status status = 0;
  if (!ReadNumbersAndFlags(ini)) return 1;
  if (!ReadFamily(ini)) return 1;

  if (g_iDFType == QUILL && ini.Text("CCOffsetSampleLocation").empty()) {
    MsgBox(
        "Location of base CC Offset Samples parameter name not found for Quill style device. "
        "Check key name CCOffsetSampleLocation in application directory in file named "
        "config.ini.  Check entry in Quvara application directory in file config.ini.");
    status = 1;
  }
  const bool rowStyle = g_iDFType == MORLIN || g_iDFType == KELD_PLUS;
  std::string systemConfigLocation;
  if (rowStyle) {
    systemConfigLocation = ini.Text("MorlinSystemConfigLocation");
    if (systemConfigLocation.empty()) {
      MsgBox(
          "Location of base System Configuration address name not found. Check entry in "
          "Quvara application directory in file config.ini.");
      return 1;
    }
  }

  if (g_iDFType != MORLIN) {
    ReadCommand(ini, "TS1readTemperature", g_sTS1ReadCommand);
    ReadCommand(ini, "TS2readTemperature", g_sTS2ReadCommand);
    const std::string packCommand = ini.Text(kPackVoltageKey);
    if (!packCommand.empty()) {
      g_sPackVoltageReadCommand = ToUpper(packCommand);
      if (g_bPackVSupported &&
          !ValidateReadCommand(g_sPackVoltageReadCommand, kPackVoltageKey, 17, 200)) {
        return 1;
      }
    }
  }
  const bool checksTS1 =
      (g_iDFType == KELD && g_bTS1Supported) || g_iDFType == QUILL || g_iDFType == KELD_PLUS;
  if (checksTS1 && !ValidateReadCommand(g_sTS1ReadCommand, "TS1readTemperature", 7, 200)) {
    return 1;
  }
  if (g_bTS2Supported && g_iDFType != MORLIN &&
      !ValidateReadCommand(g_sTS2ReadCommand, "TS2readTemperature", 7, 200)) {
    return 1;
  }

  if (LoadCfgFile(g_sDataFlashMapPath) != 0) {
    MsgBox("Can not open Dataflash configuration file. Please reinstall Quvara.");
    status = 1;
  }
  g_iCalSubclassID = 0;
  if (rowStyle && !LocateSystemConfiguration(systemConfigLocation)) return 1;
  UnloadCfgFile();

  if (g_iDFType == MORLIN) ApplyMorlinBlockChanges();
  return status;
}

}  // namespace

Status ReadConfigurationSection(const std::string& sSection, const std::string& sPath) {
  try {
    return ReadSection(SectionReader(sSection, sPath));
  } catch (const RuntimeError& error) {
    MsgBox(std::string("General Error reading configuration file. Error returned was ") +
           error.what());
    return 1;
  }
}

}  // namespace ombrelay
