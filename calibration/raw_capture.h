#pragma once
// The raw converter readings that a gauge in calibration mode streams through the manufacturer
// data command, each new one marked by a rolling counter: asking for the stream, sampling and
// averaging it into block 2 of the block table.

#include <array>
#include <cstdint>

#include "shell/host.h"

namespace ombrelay {

// Starts raw output (mode 0) or raw output for offset calibration (any other mode), averages
// g_iNumSamples distinct readings and decodes them into block 2. 0 on success; 1 after a message
// on a block of the wrong length or a counter that stands still.
Status GatherRawCalValues(std::int16_t mode);

// Brings the gauge into raw output with status byte 1 (2 for the offset variant), retrying; 0
// when it streams, 1 when it does not after all tries. No message.
Status RequestRawCalOutput();
Status RequestOffsetCalOutput();

// One reading into block 2; 1 after a message when the block has the wrong length.
Status UpdateRawCalValues();

// Waits, pumping events, for a fresh raw block in buffer. Always 0: the caller judges what
// came.
Status WaitForRawCalSequence(std::array<std::uint8_t, 256>& buffer);

}  // namespace ombrelay
