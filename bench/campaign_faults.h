#pragma once
// The faults the campaign injects right before one bus operation, chosen by what that operation
// was on the clean run.

#include <cstdint>
#include <string>
#include <vector>

#include "hosts/bus_operation.h"
#include "sim/gauge.h"

namespace ombrelay {

enum class FaultKind {
  TransferFails,
  ShorterBlock,
  LongerBlock,
  EmptyBlock,
  Block255,
  FirstByteCorrupt,
  LastByteCorrupt,
  PendingErrors,
  CounterStalls,
  WrongStoredByte,
};

struct Fault {
  FaultKind kind;
  // What the fault needs of the clean operation: the transfer it strikes, its answer's length.
  sim::Transfer transfer = sim::Transfer::WordRead;
  std::int32_t length = 0;
};

std::string FaultName(FaultKind kind);

// The faults that apply to the operation the clean run made at this point.
std::vector<Fault> FaultsFor(const BusOperation& clean);

// Arms the gauge so that the fault strikes its next transfer (or, for a stored byte, its next
// dataflash write; for a stalled counter, every raw block from now on).
void Inject(const Fault& fault, sim::Gauge& gauge);

}  // namespace ombrelay
