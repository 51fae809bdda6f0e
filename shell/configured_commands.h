#pragma once
// The commands and ManufacturerAccess words that config.ini gives the panels, as they stand at
// one moment: what a reader of the bus needs to tell the configured traffic apart. The bench
// asks the plug-in for them, as the plug-in keeps its shared state to itself.

#include <cstdint>
#include <string>
#include <vector>

namespace ombrelay {

// A measurement read that config.ini names (TS1readTemperature, TS2readTemperature,
// PackVoltageReadCommand).
struct ConfiguredRead {
  std::string what;  // "TS1 temperature", "TS2 temperature", "pack voltage"
  // True for MAC: the word goes to ManufacturerAccess and is read back from there; false for
  // SBS: a word read of command.
  bool throughManufacturerAccess = false;
  std::int32_t command = 0;
};

// A live block of the block table: the ManufacturerAccess word that selects it, the command
// that carries it and its name.
struct ConfiguredBlock {
  std::uint16_t word = 0;
  std::int32_t dataCommand = 0;
  std::string name;
};

struct ConfiguredCommands {
  std::int32_t family = 0;  // g_iDFType
  std::int32_t manufacturerAccess = 0;
  std::int32_t manufacturerData = 0;
  std::int32_t dataflashRows = 0;    // g_iDFAccessFlashCmd
  std::int32_t calibrationFlag = 0;  // g_iKeldPlusCalFlag
  std::uint16_t calibrationModeWord = 0;
  std::uint16_t exitCalibrationWord = 0;
  std::uint16_t rawOutputWord = 0;
  std::uint16_t offsetRawOutputWord = 0;
  std::int32_t calibrationAreaStart = 0;  // g_iCalSubclassID
  std::vector<ConfiguredBlock> blocks;    // the active blocks of g_atMODBlocks
  // Only those the family reads, and only those whose command the panels can read.
  std::vector<ConfiguredRead> reads;
};

// From the shared state as it stands now.
ConfiguredCommands CurrentConfiguredCommands();

}  // namespace ombrelay
