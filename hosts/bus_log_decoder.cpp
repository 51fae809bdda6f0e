#include "hosts/bus_log_decoder.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "hosts/gauge_command_names.h"
#include "shell/numeric.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

// Carries the identification, the security exchanges and, by default, the dataflash rows.
constexpr std::int32_t kAuthenticationCommand = 0x2F;
constexpr std::int64_t kMillisecondsPerSecond = 1000;
// Where the panels reach the gauge; any other address is told with the operation.
constexpr std::int16_t kGaugeAddress = 23;

bool IsWrite(const BusOperation& operation) {
  return operation.op.starts_with("Write");
}

std::string SecondsText(std::int64_t milliseconds) {
  char text[32];
  std::snprintf(text, sizeof text, "%lld.%03lld",
                static_cast<long long>(milliseconds / kMillisecondsPerSecond),
                static_cast<long long>(milliseconds % kMillisecondsPerSecond));
  return text;
}

std::string HexByte(std::int32_t value) {
  return "0x" + PadLeftZeros(Hex(static_cast<std::uint32_t>(value)), 2);
}

std::string OperationName(const BusOperation& operation) {
  if (operation.op == "CheckForError") return "check error";
  if (operation.op == "Delay") return "wait " + std::to_string(operation.len) + " ms";
  const std::string name =
      std::string(operation.word ? "word" : "block") + (IsWrite(operation) ? " write" : " read");
  if (operation.address == kGaugeAddress) return name;
  return name + ", address " + HexByte(static_cast<std::uint8_t>(operation.address));
}

std::string Named(std::string text, const std::string& name) {
  return name.empty() ? text : text + " " + name;
}

std::string WordText(std::uint16_t word, const ConfiguredCommands& configured) {
  return Named("0x" + PadLeftZeros(Hex(word), 4), ManufacturerAccessWordName(word, configured));
}

void SetStatus(BusLogRow& row, const BusOperation& operation) {
  if (operation.op == "Delay") return;
  row.failed = operation.status != 0;
  const std::string code = std::to_string(operation.status);
  // A pending error is told afterwards, by CheckForError's result.
  if (operation.op == "CheckForError") {
    row.status = row.failed ? "error " + code : "no error";
  } else {
    row.status = row.failed ? "failed, code " + code : "ok";
  }
}

}  // namespace

BusLogDecoder::BusLogDecoder(std::function<ConfiguredCommands()> configured)
    : configured_(std::move(configured)) {}

BusLogRow BusLogDecoder::Decode(const BusOperation& operation) {
  const ConfiguredCommands configured = configured_();
  if (!firstMs_) firstMs_ = operation.tMs;

  BusLogRow row;
  row.time = SecondsText(operation.tMs - *firstMs_);
  row.operation = OperationName(operation);
  row.command = CommandName(operation, configured, std::exchange(wordJustWritten_, false));
  // The record's own rule tells which bytes are a key.
  BusOperation withheld = operation;
  masking_.Apply(withheld);
  // A failed read brought nothing from the gauge.
  if (IsWrite(operation) || operation.status == 0) row.bytes = HexBytes(withheld, " ");
  if (withheld.masked && !operation.masked) row.keyBytes = HexBytes(operation, " ");
  SetStatus(row, operation);
  return row;
}

std::string BusLogDecoder::CommandName(const BusOperation& operation,
                                       const ConfiguredCommands& configured, bool afterWord) {
  if (operation.cmd == BusOperation::kNoCommand) return "";
  const std::string hex = HexByte(operation.cmd);
  if (operation.word) {
    if (operation.cmd == configured.manufacturerAccess)
      return hex + " " + ManufacturerAccessName(operation, configured, afterWord);
    return Named(hex, WordCommandName(operation.cmd, configured));
  }
  const bool write = IsWrite(operation);
  const bool carriesBlocks =
      operation.cmd == configured.manufacturerData ||
      std::ranges::any_of(configured.blocks, [&](const ConfiguredBlock& block) {
        return block.dataCommand == operation.cmd;
      });
  if (!write && carriesBlocks) return hex + " " + ManufacturerDataName(configured);
  if (operation.cmd == kAuthenticationCommand || operation.cmd == configured.dataflashRows)
    return Named(hex, ExchangeBlockName(operation, configured));
  if (write && IsIdentificationRequest(operation.cmd)) exchange_ = BlockExchange::Identification;
  return Named(hex, BlockCommandName(operation.cmd, configured));
}

std::string BusLogDecoder::ManufacturerAccessName(const BusOperation& operation,
                                                  const ConfiguredCommands& configured,
                                                  bool afterWord) {
  if (IsWrite(operation)) {
    selected_ = *operation.word;
    wordJustWritten_ = true;
    exchange_ = ExchangeStartedBy(*selected_);
    return "ManufacturerAccess " + WordText(*selected_, configured);
  }
  // Read right after a word, ManufacturerAccess answers that word.
  if (afterWord) return "ManufacturerAccess " + WordText(*selected_, configured);
  return "ManufacturerAccess";
}

std::string BusLogDecoder::ManufacturerDataName(const ConfiguredCommands& configured) const {
  if (!selected_) return "ManufacturerData";
  return "ManufacturerData " + WordText(*selected_, configured);
}

std::string BusLogDecoder::ExchangeBlockName(const BusOperation& operation,
                                             const ConfiguredCommands& configured) {
  const bool write = IsWrite(operation);
  const bool rowCommand = operation.cmd == configured.dataflashRows;
  if (exchange_ == BlockExchange::Row && rowCommand)
    return RowName(*SelectedRow(*selected_), configured);
  if (operation.cmd == kAuthenticationCommand) {
    switch (exchange_) {
      case BlockExchange::Identification:
        if (!write) return "identification";
        break;
      case BlockExchange::Unseal:
        return write ? "digest" : "challenge";
      case BlockExchange::KeyChange:
        if (!write) return "challenge";
        exchange_ = BlockExchange::KeySent;
        return "new key";
      case BlockExchange::KeySent:
        if (!write) return "digest";
        break;
      case BlockExchange::Authentication:
        return write ? "challenge" : "digest";
      case BlockExchange::None:
      case BlockExchange::Row:
        break;
    }
    // With no word before it, a written block starts an authentication.
    if (write) {
      exchange_ = BlockExchange::Authentication;
      return "challenge";
    }
  }
  // Read with no row requested, as the absolute dataflash read does first.
  return rowCommand ? "dataflash row" : "";
}

}  // namespace ombrelay
