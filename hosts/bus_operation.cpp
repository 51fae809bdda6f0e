#include "hosts/bus_operation.h"

#include <nlohmann/json.hpp>

#include "shell/numeric.h"
#include "shell/utils.h"

namespace ombrelay {

std::optional<TransferKind> TransferOf(const BusOperation& operation) {
  const std::string& op = operation.op;
  if (op == "ReadSMBusWord" || op == "ReadSMBusWord_") return TransferKind::WordRead;
  if (op == "WriteSMBusWord" || op == "WriteSMBusWord_") return TransferKind::WordWrite;
  if (op == "ReadSMBusBlock" || op == "ReadSMBusBlock_") return TransferKind::BlockRead;
  if (op == "WriteSMBusBlock") return TransferKind::BlockWrite;
  return std::nullopt;
}

std::string HexBytes(const BusOperation& operation, std::string_view separator) {
  std::string hex;
  for (const std::uint8_t byte : operation.data) {
    if (!hex.empty()) hex += separator;
    hex += operation.masked ? "**" : PadLeftZeros(Hex(byte), 2);
  }
  return hex;
}

nlohmann::json ToJson(const BusOperation& operation) {
  nlohmann::json json = {{"t_ms", operation.tMs}, {"op", operation.op},
                         {"cmd", operation.cmd},  {"data", HexBytes(operation)},
                         {"len", operation.len},  {"status", operation.status}};
  if (operation.cmd != BusOperation::kNoCommand) json["address"] = operation.address;
  if (operation.word) json["word"] = *operation.word;
  return json;
}

}  // namespace ombrelay
