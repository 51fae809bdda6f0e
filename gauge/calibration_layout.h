#pragma once
// Which record of g_atCalParameters describes this device's calibration data, and where that
// data starts in g_abCalData. Worked out afresh by each caller, as the settings may change at
// each Show.

#include <cstdint>

namespace ombrelay {

// 0 for MORLIN and KELD_PLUS and for every family while g_bUseDataflashMap2 holds, 1 for KELD,
// 2 for QUILL.
std::int16_t CalBlockIndex();

// Where the calibration data starts in g_abCalData. It goes by the family alone, also under
// g_bUseDataflashMap2.
std::int16_t CalDataBase();

}  // namespace ombrelay
