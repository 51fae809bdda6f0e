#pragma once
// The bus log as a protocol analyser shows it: each operation a row with its time, the kind of
// transfer, the command by name, the bytes and the outcome. Naming needs what went before, as
// the gauge's protocol does: a block on the manufacturer data command holds what the last
// ManufacturerAccess word selected, and a block on 0x2F is a dataflash row, the identification,
// a challenge, a digest or a new key by the traffic before it.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "hosts/bus_operation.h"
#include "hosts/gauge_command_names.h"
#include "hosts/key_masking.h"
#include "shell/configured_commands.h"

namespace ombrelay {

struct BusLogRow {
  std::string time;       // seconds since the first operation decoded, to the millisecond
  std::string operation;  // "word read", "block write", "check error", "wait 250 ms", ...
  std::string command;    // in hex, and its name where it has one: "0x3F CellVoltage1"
  std::string bytes;      // hex, a blank between bytes; "**" a byte for a key
  // The bytes of a key in clear, for whoever asks to see keys; nothing for other rows and for
  // a key the record itself withheld.
  std::optional<std::string> keyBytes;
  std::string status;  // "ok", "failed, code 1", "no error", "error 3"; empty for a wait
  bool failed = false;
};

class BusLogDecoder {
 public:
  // configured gives the configuration as it stands at each operation: the panels load it
  // during their start-ups, so the same command can mean something else later.
  explicit BusLogDecoder(std::function<ConfiguredCommands()> configured);

  // Operations in bus order, each once.
  BusLogRow Decode(const BusOperation& operation);

 private:
  // afterWord: the operation before this one wrote a word to ManufacturerAccess.
  std::string CommandName(const BusOperation& operation, const ConfiguredCommands& configured,
                          bool afterWord);
  std::string ManufacturerAccessName(const BusOperation& operation,
                                     const ConfiguredCommands& configured, bool afterWord);
  std::string ManufacturerDataName(const ConfiguredCommands& configured) const;
  // A block on 0x2F or on the dataflash row command.
  std::string ExchangeBlockName(const BusOperation& operation,
                                const ConfiguredCommands& configured);

  std::function<ConfiguredCommands()> configured_;
  KeyMasking masking_;
  std::optional<std::int64_t> firstMs_;
  std::optional<std::uint16_t> selected_;  // the last word written to ManufacturerAccess
  bool wordJustWritten_ = false;           // by the operation just decoded
  BlockExchange exchange_ = BlockExchange::None;
};

}  // namespace ombrelay
