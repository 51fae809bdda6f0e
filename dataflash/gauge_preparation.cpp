#include "dataflash/gauge_preparation.h"

#include <array>
#include <cstddef>

#include "config/app_directory.h"
#include "config/device_configuration.h"
#include "config/identification.h"
#include "config/map_library.h"
#include "gauge/gauge_mode.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

// The gauge's address, as the panels use it.
constexpr std::int16_t kTargetAddress = 23;
// The texts of the SEC1 and SEC0 bits, 0 to 3.
constexpr std::array<const char*, 4> kModes = {"in no mode", "in Full Access", "Unsealed",
                                               "Sealed"};
// What the map path holds once the map library refused the map.
constexpr const char* kRefusedMap = "NG";

std::string FamilyText() {
  const std::string_view name = FamilyName(g_iDFType);
  return name.empty() ? "unknown" : std::string(name);
}

// The map file as the target file names it: relative to the application directory.
std::string MapFile() {
  const std::string directory = ApplicationDirectory();
  if (!directory.empty() && g_sDataFlashMapPath.starts_with(directory))
    return g_sDataFlashMapPath.substr(directory.size());
  return g_sDataFlashMapPath;
}

}  // namespace

bool PrepareGauge(Host& host, Platform& platform, BackupIdentity& identity, std::string& failure) {
  g_oHost = &host;
  g_oPlatform = &platform;
  g_iTargetAddress = kTargetAddress;
  // A failed identification leaves the strings of an earlier one: only its result tells.
  if (ReadDeviceIdentification(g_iTargetAddress).empty()) {
    failure = "the gauge did not identify itself, so its dataflash map is not known";
    return false;
  }
  const std::string device = "device " + g_sDeviceNumber + ", firmware " + g_sFirmwareVersion;
  if (LoadConfigurationforDevice() != 0) {
    failure = "no configuration applies to the gauge (" + device + ")";
    return false;
  }
  if (g_sDataFlashMapPath == kRefusedMap) {
    failure = "the dataflash map of the gauge (" + device + ") does not load: " + MapLoadError();
    return false;
  }
  if (g_iDFType != MORLIN && g_iDFType != KELD_PLUS) {
    failure =
        std::string("absolute dataflash access exists on MORLIN and KELD_PLUS gauges only; ") +
        "this gauge is " + FamilyText();
    return false;
  }
  identity = {{g_sDeviceNumber, g_sFirmwareVersion, g_sFirmwareType, g_sBuildNumber},
              FamilyText(),
              MapFile()};
  return true;
}

bool CheckSecurityMode(const std::string& purpose, std::string& failure) {
  std::int16_t mode = 0;
  if (ReadOperationStatusSecurity(mode) != 0) {
    failure = "the gauge's security mode could not be read, so " + purpose + " is not made";
    return false;
  }
  if (mode == 1 || mode == 2) return true;
  failure = std::string("the gauge is ") + kModes[static_cast<std::size_t>(mode)] + ": " + purpose +
            " needs it Unsealed or in Full Access";
  return false;
}

}  // namespace ombrelay
