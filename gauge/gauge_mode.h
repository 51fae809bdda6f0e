#pragma once
// The gauge's modes: its security mode from Operation Status, and calibration mode, found and
// set in each family's way.

#include <cstdint>

#include "shell/host.h"

namespace ombrelay {

// The SEC1 and SEC0 bits of Operation Status into mode: 3 Sealed, 2 Unsealed, 1 Full Access.
// 1 after a message when the request or the read fails; mode is then unchanged.
Status ReadOperationStatusSecurity(std::int16_t& mode);

// Puts the gauge into calibration mode where its mode can be tested (MORLIN, KELD_PLUS) and
// sets g_bInCalMode from what the gauge then shows: 0 when in, 1 when not. KELD and QUILL are
// never tested: 0, with g_bInCalMode left alone. Reports nothing.
Status EnableCalibrationMode();

// Sends the exit word while g_bInCalMode is True and gives its status; otherwise sends nothing
// and gives 0. g_bInCalMode stays as it is.
Status ExitCalibrationModeCommand();

}  // namespace ombrelay
