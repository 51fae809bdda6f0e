#include "hosts/bus_operation.h"

#include <nlohmann/json.hpp>

#include "shell/numeric.h"
#include "shell/utils.h"

namespace ombrelay {

nlohmann::json ToJson(const BusOperation& operation) {
  std::string hex;
  for (const std::uint8_t byte : operation.data)
    hex += operation.masked ? "**" : PadLeftZeros(Hex(byte), 2);
  nlohmann::json json = {{"t_ms", operation.tMs}, {"op", operation.op},
                         {"cmd", operation.cmd},  {"data", hex},
                         {"len", operation.len},  {"status", operation.status}};
  if (operation.cmd != BusOperation::kNoCommand) json["address"] = operation.address;
  if (operation.word) json["word"] = *operation.word;
  return json;
}

}  // namespace ombrelay
