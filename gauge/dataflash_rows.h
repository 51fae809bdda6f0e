#pragma once
// The row mechanism of MORLIN and KELD_PLUS dataflash: ManufacturerAccess word 0x0100 + row
// selects a 32-byte row, which the dataflash access command then reads or writes.

#include <cstdint>

#include "shell/host.h"

namespace ombrelay {

inline constexpr std::int16_t kRowLength = 32;

// The word that selects row.
std::int16_t RowWord(std::int32_t row);

// Selects the row with that word and waits 3 ms beyond the word's own wait.
Status RequestRow(std::int16_t rowWord);

}  // namespace ombrelay
