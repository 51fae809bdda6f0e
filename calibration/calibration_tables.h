#pragma once
// The tables every calibration goes through: the manufacturer blocks of live values and, per
// device family, the layout of the calibration parameters in dataflash with their factory values.

// CalBlockIndex and CalDataBase, which select into these tables, live with the gauge access
// that decodes the calibration data.
#include "gauge/calibration_layout.h"

namespace ombrelay {

// Fills g_atMODBlocks and g_atCalParameters anew and sets the flash delays. Reads nothing from
// the gauge and cannot fail.
void CalInit();

}  // namespace ombrelay
