#include "hosts/gauge_command_names.h"

#include <algorithm>
#include <array>
#include <utility>

#include "gauge/dataflash_rows.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

// Enough rows for every address a 16-bit signed value can give.
constexpr std::int32_t kRowCount = 1024;
constexpr std::int32_t kCalibrationBlockLength = 64;
constexpr std::int32_t kCalibrationBlockCommand = 0x58;

struct FixedWord {
  std::uint16_t word;
  const char* name;
  BlockExchange exchange;
};

constexpr std::array<FixedWord, 9> kFixedWords = {{
    {0x0030, "seal", BlockExchange::None},
    {0x0031, "unseal", BlockExchange::Unseal},
    {0x0032, "full access", BlockExchange::Unseal},
    {0x0035, "change Unseal key", BlockExchange::KeyChange},
    {0x0036, "change Full Access key", BlockExchange::KeyChange},
    {0x0037, "change Authentication key", BlockExchange::KeyChange},
    {0x0054, "Operation Status", BlockExchange::None},
    {0x0057, "Manufacturing Status", BlockExchange::None},
    // The raw output request that waiting for a fresh raw block sends, whatever is configured.
    {0xF081, "raw output", BlockExchange::None},
}};

constexpr std::array<std::pair<std::int32_t, const char*>, 12> kSmartBatteryWords = {{
    {0x08, "Temperature"},
    {0x09, "Voltage"},
    {0x0A, "Current"},
    {0x0D, "RelativeStateOfCharge"},
    {0x3F, "CellVoltage1"},
    {0x3E, "CellVoltage2"},
    {0x3D, "CellVoltage3"},
    {0x3C, "CellVoltage4"},
    {0x3B, "AltCellVoltage1"},
    {0x3A, "AltCellVoltage2"},
    {0x39, "AltCellVoltage3"},
    {0x38, "AltCellVoltage4"},
}};

const FixedWord* FindFixedWord(std::uint16_t word) {
  const auto fixed = std::ranges::find(kFixedWords, word, &FixedWord::word);
  return fixed == kFixedWords.end() ? nullptr : &*fixed;
}

std::string ConfiguredReadName(std::int32_t command, bool throughManufacturerAccess,
                               const ConfiguredCommands& configured) {
  for (const ConfiguredRead& read : configured.reads) {
    if (read.command == command && read.throughManufacturerAccess == throughManufacturerAccess)
      return read.what;
  }
  return "";
}

}  // namespace

BlockExchange ExchangeStartedBy(std::uint16_t word) {
  if (SelectedRow(word)) return BlockExchange::Row;
  const FixedWord* fixed = FindFixedWord(word);
  return fixed == nullptr ? BlockExchange::None : fixed->exchange;
}

std::string ManufacturerAccessWordName(std::uint16_t word, const ConfiguredCommands& configured) {
  if (const FixedWord* fixed = FindFixedWord(word)) return fixed->name;
  if (const auto row = SelectedRow(word)) return RowName(*row, configured);
  for (const ConfiguredBlock& block : configured.blocks) {
    if (block.word == word) return block.name;
  }
  if (word == configured.calibrationModeWord) return "calibration mode";
  if (word == configured.exitCalibrationWord) return "exit calibration";
  if (word == configured.rawOutputWord) return "raw output";
  if (word == configured.offsetRawOutputWord) return "raw output for offset";
  return ConfiguredReadName(static_cast<std::int16_t>(word), true, configured);
}

std::optional<std::int32_t> SelectedRow(std::uint16_t word) {
  const std::int32_t row = word - kFirstRowWord;
  if (row < 0 || row >= kRowCount) return std::nullopt;
  return row;
}

std::string RowName(std::int32_t row, const ConfiguredCommands& configured) {
  const std::int32_t calibrationRow = row - configured.calibrationAreaStart / kRowLength;
  if (calibrationRow == 0 || calibrationRow == 1)
    return "calibration row " + std::to_string(calibrationRow);
  return "dataflash row " + std::to_string(row);
}

std::string WordCommandName(std::int32_t command, const ConfiguredCommands& configured) {
  const auto standard =
      std::ranges::find(kSmartBatteryWords, command, &std::pair<std::int32_t, const char*>::first);
  if (standard != kSmartBatteryWords.end()) return standard->second;
  if (configured.family == KELD && command == 0x2F) return "pack configuration";
  if (configured.family == QUILL && command == 0x77) return "subclass select";
  if (configured.family == KELD_PLUS && command == configured.calibrationFlag)
    return "calibration flag";
  return ConfiguredReadName(command, false, configured);
}

bool IsIdentificationRequest(std::int32_t command) {
  return command == 0x20 || command == 0x22;
}

std::string BlockCommandName(std::int32_t command, const ConfiguredCommands& configured) {
  if (IsIdentificationRequest(command)) return "identification request";
  if (configured.family == KELD &&
      command ==
          kCalibrationBlockCommand + configured.calibrationAreaStart / kCalibrationBlockLength)
    return "calibration block";
  if (configured.family == QUILL && command == 0x78) return "subclass data";
  return "";
}

}  // namespace ombrelay
