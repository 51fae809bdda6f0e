#pragma once
// The dataflash bytes a run of bus operations wrote, told from the operations alone, so that a
// calibration report says what the bus log says: the calibration area read before a write gives
// the old bytes, the write the new ones, and the first read after it what the gauge kept. Rows
// are told by the ManufacturerAccess word that selects them and addressed absolutely, row * 32
// plus the position; the KELD block and the QUILL subclass by their command and offset.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/bus_operation.h"

namespace ombrelay {

struct ChangedByte {
  std::string area;      // "row 2", "block 0x58", "subclass 0x68"
  std::int32_t address;  // row * 32 + position for rows, else the offset in the block or subclass
  std::optional<std::uint8_t> old;  // unknown when the area was not read before the write
  std::uint8_t written;
  std::optional<std::uint8_t> readBack;  // unknown when the area was not read after the write
  // The calibration parameter the byte belongs to, when the report names it; empty otherwise.
  std::string parameter = {};

  bool operator==(const ChangedByte&) const = default;
};

// Where each family keeps what it writes: its data command, and the command and words that
// select the area, as the configured family has them.
struct DataflashAreas {
  std::int32_t family;          // KELD, QUILL, MORLIN or KELD_PLUS
  std::int32_t rowDataCommand;  // g_iDFAccessFlashCmd, for the row families
};

// Every byte written whose old value differs or is unknown, or whose read-back differs from what
// was written, in the order the areas were first written, then by address.
std::vector<ChangedByte> DataflashChanges(std::span<const BusOperation> operations,
                                          const DataflashAreas& areas);

}  // namespace ombrelay
