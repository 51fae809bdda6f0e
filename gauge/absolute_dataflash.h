#pragma once
// Any two bytes of MORLIN's and KELD_PLUS's dataflash by absolute address, through the same row
// requests as the calibration rows. A pair at position 31 of a row spans into the next row.

#include <cstdint>

#include "shell/host.h"

namespace ombrelay {

// The bytes at address and address + 1. 0 on success; after a message, 1 when a row request
// fails, or the host's status when a row read fails or comes short (so 0 for a short row); the
// outputs are then unset. A negative address is refused with 1 and no bus traffic.
Status ReadDFAbsolute(std::int16_t address, std::uint8_t& firstByte, std::uint8_t& secondByte);

// Reads the row or rows, patches the two bytes, writes the rows and reads them back (traffic
// only: the read-back is not compared). 1 after a message when a row request fails; otherwise
// the host's status of the last failed read, write or read-back, after its message. A negative
// address is refused with 1 and no bus traffic.
Status WriteDFAbsolute(std::int16_t address, std::uint8_t firstByte, std::uint8_t secondByte);

}  // namespace ombrelay
