#include "config/device_configuration.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "config/app_directory.h"
#include "config/configuration_section.h"
#include "config/dataflash_map.h"
#include "config/identification.h"
#include "config/profile.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kSectionBufferSize = 2082;
constexpr std::int16_t kSecurityPanelAddress = 23;

constexpr const char* kNotConfigured =
    "Could not find Quvara configured version for connected Firmware or key configuration "
    "incorrect in application directory in file config.ini.";

// From the least to the most specific: the last one found is the one that counts.
std::array<std::string, 5> SectionNames() {
  const std::string device = "D" + g_sDeviceNumber;
  const std::string version = device + "_" + g_sFirmwareVersion;
  return {device, device + "_T_" + g_sFirmwareType, version, version + "_" + g_sFirmwareType,
          version + "_" + g_sFirmwareType + "_" + g_sBuildNumber};
}

}  // namespace

std::vector<std::string> FoundSectionNames(const std::string& path) {
  std::vector<std::string> found;
  for (const std::string& section : SectionNames()) {
    std::string text;
    if (GetPrivateProfileSectionA(section, text, kSectionBufferSize, path) > 0)
      found.push_back(section);
  }
  return found;
}

Status LoadDeviceConfiguration() {
  const std::string path = ApplicationDirectory() + "config.ini";
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) {
    MsgBox(
        "config.ini file does not exist in application directory. Please check installation. Do "
        "not proceed with calibration.",
        MessageStyle::Error);
    return 1;
  }

  const std::vector<std::string> found = FoundSectionNames(path);
  for (const std::string& section : found)
    ReadConfigurationSection(section, path);
  if (found.empty()) {
    MsgBox(
        "A section name matching device and firmware version was not found in configuration "
        "file " +
        path + ". Please obtain Quvara that supports this Firmware.");
    return 1;
  }
  return 0;
}

Status LoadConfigurationforDevice() {
  if (LocateDataflashMap() != 0) {
    MsgBox(
        "Please do not use this tool for calibration. Some configuration information is missing "
        "to calibrate this device.",
        MessageStyle::Error);
    return 1;
  }
  if (LoadDeviceConfiguration() != 0) {
    MsgBox(kNotConfigured);
    return 1;
  }
  return 0;
}

void LoadConfigurationforSecurityPanel() {
  if (ReadDeviceIdentification(kSecurityPanelAddress).empty()) {
    MsgBox(
        "Unable to read device number and firmware version of connected device. Please ensure "
        "device is connected and operating. Restart this tool with device connected.",
        MessageStyle::Error);
  }
  LocateDataflashMap();
  if (LoadDeviceConfiguration() != 0) MsgBox(kNotConfigured, MessageStyle::Error);
}

bool GetConfigSection(const std::string& sDevVer, std::string& sDeviceConfigSection,
                      std::string& sVersionConfigSection) {
  const auto dot = sDevVer.find('.');
  if (dot == std::string::npos) return false;
  sDeviceConfigSection = sDevVer.substr(0, dot);
  sVersionConfigSection = sDevVer;
  std::replace(sVersionConfigSection.begin(), sVersionConfigSection.end(), '.', '_');
  return true;
}

}  // namespace ombrelay
