#include "gauge/cell_count.h"

#include <array>
#include <string>

#include "config/dataflash_map.h"
#include "config/map_library.h"
#include "gauge/absolute_dataflash.h"
#include "gauge/gauge_mode.h"
#include "gauge/manufacturer_access.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kKeldPackConfigurationCommand = 0x2F;
constexpr std::int32_t kSelectSubclassCommand = 0x77;
constexpr std::int32_t kSubclassDataCommand = 0x78;
constexpr std::uint8_t kCellBits = 0x03;

// KELD and QUILL count cells as the two bits plus one.
Status CountFromBitsPlusOne(std::uint8_t byte, std::int16_t& numCells) {
  numCells = static_cast<std::int16_t>((byte & kCellBits) + 1);
  return numCells >= 2 && numCells <= 4 ? 0 : 1;
}

Status ReadKeldCells(std::int16_t& numCells) {
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  if (g_oHost->ReadSMBusWord(kKeldPackConfigurationCommand, high, low, g_iTargetAddress) != 0) {
    MsgBox("Error reading Pack config from KELD device to determine number of cells in use.");
    return 1;
  }
  return CountFromBitsPlusOne(high, numCells);
}

Status ReadQuillCells(std::int16_t& numCells) {
  if (LoadCfgFile(g_sDataFlashMapPath) != 0) {
    MsgBox(
        "Can not open Dataflash configuration file attempting to read number of configured "
        "cells. Please reinstall Quvara.");
    return 1;
  }
  std::int32_t subclass = 0;
  std::int32_t offset = 0;
  std::string value;
  std::string defaultValue;
  std::string type;
  const std::int32_t found = FindDFParameter("Configuration", "Registers", "Operation Cfg A",
                                             subclass, offset, value, defaultValue, type, false);
  UnloadCfgFile();
  if (found == kParameterNotFound) {
    MsgBox(
        "Unable to obtain Subclass and Offset for parameter Operation Cfg A from Dataflash. "
        "Please check communication with device.");
    return 1;
  }
  DrainBusErrors();

  // The subclass is asked for twice; a first request that fails goes unreported: the read decides.
  const auto number = static_cast<std::uint8_t>(subclass & 0xFF);
  if (g_oHost->WriteSMBusWord(kSelectSubclassCommand, 0, number, g_iTargetAddress) == 0) {
    g_oPlatform->Sleep(100);
    if (g_oHost->WriteSMBusWord(kSelectSubclassCommand, 0, number, g_iTargetAddress) != 0) {
      MsgBox(
          "Attempt to request class data from Dataflash failed.  Please check communication "
          "with device.");
      return 1;
    }
  }
  // The parameter's offset is not used: its first byte is byte 0 of the subclass.
  std::array<std::uint8_t, kCalDataSize> block{};
  std::int16_t length = 0;
  if (g_oHost->ReadSMBusBlock_(kSubclassDataCommand, block, length, g_iTargetAddress) != 0 ||
      length == 0) {
    MsgBox(
        "Unable to read class Configuration subclass Registers parameter Operation Cfg A from "
        "Dataflash.");
    return 1;
  }
  return CountFromBitsPlusOne(block[0], numCells);
}

Status ReadSystemConfigurationCells(std::int16_t& numCells) {
  if (g_bInCalMode) ExitCalibrationModeCommand();
  std::uint8_t first = 0;
  std::uint8_t second = 0;
  if (ReadDFAbsolute(g_iSystemConfigAddress, first, second) != 0) {
    MsgBox(
        "Unable to read number of configured cells from Dataflash. Please check communications "
        "with device.");
    return 1;
  }
  const bool firstByte = g_iDFType == KELD_PLUS || g_iSystemConfigurationParamLength == 1;
  // 3 means 4 cells, 2 three, 1 two; 0 is no valid count.
  const int bits = (firstByte ? first : second) & kCellBits;
  numCells = static_cast<std::int16_t>(bits == 0 ? 0 : bits + 1);
  return numCells == 0 ? 1 : 0;
}

}  // namespace

Status ReadNumberofCells(std::int16_t& numCells) {
  switch (g_iDFType) {
    case KELD:
      return ReadKeldCells(numCells);
    case QUILL:
      return ReadQuillCells(numCells);
    case MORLIN:
    case KELD_PLUS:
      return ReadSystemConfigurationCells(numCells);
    default:
      return 0;
  }
}

}  // namespace ombrelay
