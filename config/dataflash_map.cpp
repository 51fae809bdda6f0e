#include "config/dataflash_map.h"

#include <algorithm>
#include <array>
#include <span>

#include "config/app_directory.h"
#include "config/map_library.h"
#include "config/profile.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

static_assert(kMaxMapClasses <= kParameterNotFound, "a class index must never read as not found");

constexpr std::size_t kMapTextBufferSize = 128;
constexpr std::int32_t kTargetBufferSize = 2046;

// Hands the library a buffer of NULs and takes the text up to the first NUL.
template <typename LibraryCall>
std::string ReadMapText(LibraryCall call) {
  std::array<char, kMapTextBufferSize> buffer{};
  call(std::span<char>(buffer));
  return {buffer.begin(), std::find(buffer.begin(), buffer.end(), '\0')};
}

}  // namespace

std::string MapClassName(std::int32_t iClass) {
  return ReadMapText([&](std::span<char> buffer) { GetClass(iClass, buffer); });
}

std::string MapSubclassName(std::int32_t iClass, std::int32_t iSubclass, std::int32_t& lId) {
  return ReadMapText(
      [&](std::span<char> buffer) { GetNextSubClass(iClass, iSubclass, lId, buffer); });
}

std::string MapParameterName(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter) {
  return ReadMapText(
      [&](std::span<char> buffer) { GetName(iClass, iSubclass, iParameter, buffer); });
}

std::string MapParameterValue(std::int32_t iClass, std::int32_t iSubclass,
                              std::int32_t iParameter) {
  return ReadMapText(
      [&](std::span<char> buffer) { GetValue(iClass, iSubclass, iParameter, buffer); });
}

std::string MapParameterDefault(std::int32_t iClass, std::int32_t iSubclass,
                                std::int32_t iParameter) {
  return ReadMapText(
      [&](std::span<char> buffer) { GetDefValue(iClass, iSubclass, iParameter, buffer); });
}

std::string MapParameterType(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter) {
  return ToUpper(ReadMapText(
      [&](std::span<char> buffer) { GetDataType(iClass, iSubclass, iParameter, buffer); }));
}

std::int32_t FindDFParameter(const std::string& sClass, const std::string& sSubclass,
                             const std::string& vParameter, std::int32_t& lSubclassID,
                             std::int32_t& lOffset, std::string& sParamValue,
                             std::string& sParamDefault, std::string& sParamType, bool bSilent) {
  for (std::int32_t iClass = 0; iClass < GetNumClasses(); ++iClass) {
    if (MapClassName(iClass) != sClass) continue;
    for (std::int32_t iSubclass = 0; iSubclass < GetNumSubClasses(iClass); ++iSubclass) {
      if (MapSubclassName(iClass, iSubclass, lSubclassID) != sSubclass) continue;
      for (std::int32_t iParameter = 0; iParameter < GetNumData(iClass, iSubclass); ++iParameter) {
        if (MapParameterName(iClass, iSubclass, iParameter) != vParameter) continue;
        lOffset = GetOffset(iClass, iSubclass, iParameter);
        sParamValue = MapParameterValue(iClass, iSubclass, iParameter);
        sParamDefault = MapParameterDefault(iClass, iSubclass, iParameter);
        sParamType = MapParameterType(iClass, iSubclass, iParameter);
        return iClass;
      }
    }
  }
  if (!bSilent) {
    MsgBox("Error: Could not find subclass and offset for " + sClass + "." + sSubclass + "." +
           vParameter);
  }
  return kParameterNotFound;
}

std::int32_t LocateDataflashMap() {
  const std::string applicationDirectory = ApplicationDirectory();

  std::string targetFile;
  GetPrivateProfileStringA("Targets", g_sDeviceNumber + "_" + g_sFirmwareVersion, "", targetFile,
                           kTargetBufferSize, applicationDirectory + "Quvara.ini");
  if (targetFile.empty()) {
    MsgBox(
        "Data Flash Configuration not found in Quvara installation. Please obtain a version of "
        "Quvara that supports this device and Firmware version. Using this tool on an "
        "unsupported device may destroy it.",
        MessageStyle::Error);
    return 1;
  }

  // Without Defaults the path of an earlier search stands.
  std::string mapFile;
  if (GetPrivateProfileStringA("DataFlash", "Defaults", "", mapFile, kTargetBufferSize,
                               applicationDirectory + targetFile) > 0) {
    g_sDataFlashMapPath = mapFile;
  }
  if (g_sDataFlashMapPath.empty()) {
    MsgBox(
        "Data Flash Configuration not found. Please obtain a version of Quvara that supports "
        "this device.",
        MessageStyle::Error);
    return 1;
  }
  g_sDataFlashMapPath = applicationDirectory + g_sDataFlashMapPath;

  // Only a trial: the searches load the map again when they need it.
  if (LoadCfgFile(g_sDataFlashMapPath) != 0) {
    g_sDataFlashMapPath = "NG";
    MsgBox(
        "Unrecognized device or cannot find the .encr file for the connected device. This file "
        "is needed to configure the dataflash.");
  }
  UnloadCfgFile();
  return 0;
}

}  // namespace ombrelay
