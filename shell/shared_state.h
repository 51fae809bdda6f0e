#pragma once
// What the modules share: set during start-up, read everywhere afterwards, alive as long as the
// plug-in is loaded. Everything starts at zero, False or the empty string.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "shell/mod_block.h"

namespace ombrelay {

class Host;
class Platform;

// Host and addressing.
extern Host* g_oHost;
extern std::int16_t g_iTargetAddress;
extern std::uint8_t g_bZenoMAC;

// Where message boxes, waits and timers go; set by whoever hosts the panels.
extern Platform* g_oPlatform;
// The plug-in's own folder, ending in "plugins"; the application directory is the one above.
extern std::string g_sPluginFolder;

// Device identity.
extern std::string g_sDeviceNumber;
extern std::string g_sFirmwareVersion;
extern std::string g_sFirmwareType;
extern std::string g_sBuildNumber;
extern std::int16_t g_iNumCells;

// Device family: 0 KELD, 1 QUILL, 2 MORLIN, 3 KELD_PLUS.
inline constexpr std::int32_t KELD = 0;
inline constexpr std::int32_t QUILL = 1;
inline constexpr std::int32_t MORLIN = 2;
inline constexpr std::int32_t KELD_PLUS = 3;
// The families' keywords, by g_iDFType.
inline constexpr std::array<std::string_view, 4> kFamilyNames = {"KELD", "QUILL", "MORLIN",
                                                                 "KELD_PLUS"};
// The keyword of a g_iDFType; empty for a value that is none of the four.
inline std::string_view FamilyName(std::int32_t dfType) {
  if (dfType < KELD || dfType > KELD_PLUS) return {};
  return kFamilyNames[static_cast<std::size_t>(dfType)];
}

// Device kind and features.
extern std::int32_t g_iDFType;
extern bool g_bIntTSSupported;
extern bool g_bTS1Supported;
extern bool g_bTS2Supported;
extern bool g_bTS3Supported;
extern bool g_bTS4Supported;
extern bool g_bBatteryVSupported;
extern bool g_bPackVSupported;
extern bool g_bReadAltCellVoltages;
extern bool g_bRemoveCell4onDisplay;
extern bool g_bInternalTSandTS1only;
extern bool g_bUseDataflashMap2;

// Device commands.
extern std::int16_t g_iManuDataCmd;
extern std::int16_t g_iDFAccessFlashCmd;
extern std::int16_t g_iExitCalCommand;
extern std::int16_t g_iOutputCalValuesCommand;
extern std::int16_t g_iOutputCalValuesforOffsetCommand;
extern std::int16_t g_iCalMode;
extern std::int16_t g_iKeldPlusCalFlag;
extern std::int16_t g_iKeldPlusCalFlagBitPos;
extern std::int16_t g_iNumSamples;
extern std::int16_t g_iRawCalDataBlockSize;
extern std::string g_sTS1ReadCommand;
extern std::string g_sTS2ReadCommand;
extern std::string g_sPackVoltageReadCommand;

// Dataflash places.
extern std::string g_sDataFlashMapPath;
extern std::int16_t g_iCalSubclassID;
extern std::int16_t g_iSystemConfigAddress;
extern std::int16_t g_iSystemConfigurationParamLength;
extern std::int16_t g_iCCOffsetSamples;

// Calibration working data.
inline constexpr int kCalDataSize = 256;
inline constexpr int kMODBlockCount = 5;
inline constexpr int kCalParameterRecords = 3;
extern std::array<std::uint8_t, kCalDataSize> g_abCalData;
extern std::array<MODBlock, kMODBlockCount> g_atMODBlocks;
extern std::array<MODBlock, kCalParameterRecords> g_atCalParameters;
extern bool g_bInCalMode;
extern float g_sngFlashReadDelay;
extern float g_sngFlashWriteDelay;

// Back to the state of a freshly loaded plug-in: zero, False, empty; no host, no platform.
void ResetSharedState();

}  // namespace ombrelay
