#pragma once
// What a calibration flow's trace watches on the panel: the scan timer, the calibration
// controls and the done marks.

#include "panel/nbcal.h"
#include "tests/support/flow_trace.h"

namespace ombrelay::testing {

// Lines "timer on|off", "controls on|off" (or which of buttons and check boxes are on, when they
// differ), and "on|off" of the done marks: "done mark" (voltage and temperature), "pack mark",
// "current mark", "offset mark" (coulomb counter) and "board mark".
FlowTrace::Probe PanelProbe(const NBCal& panel);

}  // namespace ombrelay::testing
