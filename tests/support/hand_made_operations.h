#pragma once
// Bus operations made by hand, as a recording host records them, for readers of the record
// that need a sequence no flow makes.

#include <cstdint>
#include <utility>
#include <vector>

#include "hosts/bus_operation.h"
#include "shell/host.h"

namespace ombrelay::testing {

// op of the host at clock time tMs, on command, at the gauge's address 23.
inline BusOperation Operation(const char* op, std::int32_t command, std::int64_t tMs) {
  BusOperation operation;
  operation.tMs = tMs;
  operation.op = op;
  operation.cmd = command;
  operation.address = command == BusOperation::kNoCommand ? 0 : 23;
  return operation;
}

inline BusOperation Word(const char* op, std::int32_t command, std::uint16_t word, std::int64_t tMs,
                         Status status = 0) {
  BusOperation operation = Operation(op, command, tMs);
  operation.data = {static_cast<std::uint8_t>(word & 0xFF), static_cast<std::uint8_t>(word >> 8)};
  operation.len = 2;
  operation.word = word;
  operation.status = status;
  return operation;
}

inline BusOperation Block(const char* op, std::int32_t command, std::vector<std::uint8_t> data,
                          std::int64_t tMs, Status status = 0) {
  BusOperation operation = Operation(op, command, tMs);
  operation.len = static_cast<std::int32_t>(data.size());
  operation.data = std::move(data);
  operation.status = status;
  return operation;
}

}  // namespace ombrelay::testing
