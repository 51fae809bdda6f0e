#include "shell/configured_commands.h"

#include <optional>
#include <utility>

#include "shell/numeric.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

// A read command as the measurement read takes it apart; nothing where that read would send
// nothing or fail on the number.
std::optional<ConfiguredRead> ParseRead(const std::string& readCommand, const char* what) {
  const std::vector<std::string> parts = Split(readCommand, ',');
  if (parts.size() < 2 || parts[0].empty() || parts[1].empty()) return std::nullopt;
  const std::string_view source = Trim(parts[0]);
  if (source != "SBS" && source != "MAC") return std::nullopt;
  try {
    return ConfiguredRead{what, source == "MAC", TextToInt16(parts[1])};
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

}  // namespace

ConfiguredCommands CurrentConfiguredCommands() {
  ConfiguredCommands commands;
  commands.family = g_iDFType;
  commands.manufacturerAccess = g_bZenoMAC;
  commands.manufacturerData = g_iManuDataCmd;
  commands.dataflashRows = g_iDFAccessFlashCmd;
  commands.calibrationFlag = g_iKeldPlusCalFlag;
  commands.calibrationModeWord = static_cast<std::uint16_t>(g_iCalMode);
  commands.exitCalibrationWord = static_cast<std::uint16_t>(g_iExitCalCommand);
  commands.rawOutputWord = static_cast<std::uint16_t>(g_iOutputCalValuesCommand);
  commands.offsetRawOutputWord = static_cast<std::uint16_t>(g_iOutputCalValuesforOffsetCommand);
  commands.calibrationAreaStart = g_iCalSubclassID;
  // The inactive one is the Current block, filled from an SBS word and never selected.
  for (const MODBlock& block : g_atMODBlocks) {
    if (block.bActive) {
      commands.blocks.push_back(
          {static_cast<std::uint16_t>(block.iCommand), block.lDataCommand, block.sName});
    }
  }
  // MORLIN neither loads nor reads these: what they hold was left by another device.
  if (g_iDFType != MORLIN) {
    for (const auto& [text, what] : {std::pair{&g_sTS1ReadCommand, "TS1 temperature"},
                                     std::pair{&g_sTS2ReadCommand, "TS2 temperature"},
                                     std::pair{&g_sPackVoltageReadCommand, "pack voltage"}}) {
      if (auto read = ParseRead(*text, what)) commands.reads.push_back(*read);
    }
  }
  return commands;
}

}  // namespace ombrelay
