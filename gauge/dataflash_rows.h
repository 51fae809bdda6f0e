#pragma once
// The row mechanism of MORLIN and KELD_PLUS dataflash: ManufacturerAccess word 0x0100 + row
// selects a 32-byte row, which the dataflash access command then reads or writes.

#include <cstdint>
#include <span>

#include "shell/host.h"

namespace ombrelay {

inline constexpr std::int16_t kRowLength = 32;
// The word that selects row 0; row n is this plus n.
inline constexpr std::uint16_t kFirstRowWord = 0x0100;

// The word that selects row.
std::int16_t RowWord(std::int32_t row);

// Selects the row with that word and waits 3 ms beyond the word's own wait.
Status RequestRow(std::int16_t rowWord);

// What an absolute read starts with: the exit word, so that the gauge is out of calibration
// mode, and a read before any row is requested, as the gauge expects; what that read gives is
// of no use.
void StartAbsoluteRead();

// Reads the selected row into the front of buffer: true when it came whole. status is the
// host's, which is 0 for a row that came short; length is what came.
bool ReadRow(std::span<std::uint8_t> buffer, Status& status, std::int16_t& length);

// Writes the first 32 bytes of row into the selected row and gives the flash 200 ms; the
// host's status.
Status WriteRow(std::span<const std::uint8_t> row);

}  // namespace ombrelay
