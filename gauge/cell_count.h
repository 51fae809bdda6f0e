#pragma once
// How many cells the pack is configured for, read from the gauge's dataflash in the family's
// own way.

#include <cstdint>

#include "shell/host.h"

namespace ombrelay {

// numCells from the pack configuration: KELD's pack word, QUILL's Configuration/Registers
// subclass (found through the dataflash map), the System Configuration parameter of MORLIN and
// KELD_PLUS. 0 for 2 to 4 cells, 1 otherwise; a failed read shows its message, returns 1 and
// leaves numCells alone. Any other family: 0, nothing read.
Status ReadNumberofCells(std::int16_t& numCells);

}  // namespace ombrelay
