#pragma once
// One host operation as it went over the bus: what a test asserts and what the bench's bus log
// shows.

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrelay {

struct BusOperation {
  // cmd of the operations that have no command: CheckForError and Delay.
  static constexpr std::int32_t kNoCommand = -1;

  std::int64_t tMs = 0;  // clock time at the call
  std::string op;        // the Host operation's name, "ReadSMBusBlock_", "Delay", ...
  std::int32_t cmd = kNoCommand;
  // Bytes sent, or received as the caller holds them after the call; words low byte first,
  // as on the wire.
  std::vector<std::uint8_t> data;
  std::int32_t len = 0;               // block length, 2 for words, the count of a Delay
  std::int32_t status = 0;            // the result; for CheckForError the error it gave
  std::optional<std::uint16_t> word;  // word operations only: the bit pattern
  std::int16_t address = 0;           // the target; 0 for the operations without a command
  // The data bytes are a secret withheld from the record: zeros here, "**" each in JSON.
  bool masked = false;

  bool operator==(const BusOperation&) const = default;
};

enum class TransferKind { WordRead, WordWrite, BlockRead, BlockWrite };

// The transfer an operation made, whichever of the host's names for it the operation has;
// nothing for CheckForError and Delay.
std::optional<TransferKind> TransferOf(const BusOperation& operation);

// The data bytes in upper-case hex, two digits a byte, "**" a byte when masked, separator between
// the bytes.
std::string HexBytes(const BusOperation& operation, std::string_view separator = "");

// One JSON object: t_ms, op, cmd, data (upper-case hex, two digits a byte, "**" a byte when
// masked), len, status, address for the operations with a command, and word for word operations
// only.
nlohmann::json ToJson(const BusOperation& operation);

}  // namespace ombrelay
