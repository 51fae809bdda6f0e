#pragma once
// The live values the gauge reports in manufacturer blocks: a ManufacturerAccess word selects a
// block, a block read returns it, and each field of g_atMODBlocks is decoded into its text.

#include <array>
#include <cstdint>

#include "shell/host.h"

namespace ombrelay {

// A manufacturer block as read off the bus, low byte first in every multi-byte value.
using MODBuffer = std::array<std::uint8_t, 256>;

// Refreshes blocks 0 and 1 (when active) and the current in block 3. 0, or 1 after a message
// when a block could not be requested.
Status ReadAllMODBlocks();

// Requests, reads and decodes one block of g_atMODBlocks. A failed read, or a request that
// only went through on the second try, empties the block's shown fields. The status of the
// last request written; 0 for success.
Status ReadMODBlock(std::int16_t blockIndex, MODBuffer& buffer);

// Decodes every named slot of the block, the ones beyond lFieldCount included.
void DecodeMODBlock(std::int16_t blockIndex, const MODBuffer& buffer);

// One field by its type code: U1, U2, T2 or I2.
void DecodeMODField(std::int16_t blockIndex, std::int16_t fieldIndex, const MODBuffer& buffer);

// The same for the raw calibration values, which carry no temperatures: U1, U2 or I2.
void DecodeMODFieldRaw(std::int16_t blockIndex, std::int16_t fieldIndex, const MODBuffer& buffer);

}  // namespace ombrelay
