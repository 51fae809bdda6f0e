#pragma once
// The calibration area of dataflash, copied to and from g_abCalData in the style of the device
// family: KELD's 64-byte block, QUILL's calibration subclass, the two 32-byte rows of MORLIN and
// KELD_PLUS. Writes are checked by reading back.

#include <cstdint>
#include <span>

#include "shell/host.h"

namespace ombrelay {

// The read or write of the family's style; 0 and nothing done for an unknown family.
Status ReadCalDataflash();
Status WriteCalDataflash();

// KELD: always 0; a bad write shows only in its message boxes.
Status ReadKELDCalBlocks();
Status WriteKELDCalBlocks();

// QUILL: the calibration subclass into buffer, which must hold the whole subclass; 1 after a
// message when the read fails.
Status ReadCalSubclass(std::span<std::uint8_t> buffer);
// QUILL: as many bytes of g_abCalData as the subclass is long; 1 after a message on any
// failure or difference.
Status WriteCalSubclass();

// MORLIN and KELD_PLUS: 1 when the first row did not arrive whole; the second row's bytes are
// zeros when it did not.
Status ReadCalRows();
// MORLIN and KELD_PLUS: 1 after a message when the second row cannot be requested or a row
// reads back differently.
Status WriteCalRows();

}  // namespace ombrelay
