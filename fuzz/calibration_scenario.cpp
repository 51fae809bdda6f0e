#include "fuzz/calibration_scenario.h"

#include <algorithm>
#include <string>
#include <vector>

#include "shell/shared_state.h"

namespace ombrelay::fuzz {
namespace {

// The boxes a calibration reads: the stack voltages of the cells the gauge said it uses (no
// more than the page has), the battery voltage, and the sensors the scan fills.
void TypeTypicalEntries(NBCal& panel) {
  const auto cells = std::clamp<std::size_t>(
      static_cast<std::size_t>(std::max<int>(g_iNumCells, 0)), 0, panel.txtVoltage.size());
  for (std::size_t cell = 0; cell < cells; ++cell)
    panel.txtVoltage[cell].Text = std::to_string(kCellMv * (cell + 1));
  panel.chkVoltageCal.Value = 1;
  panel.txtBatVoltageActual.Text = std::to_string(kCellMv * cells);
  // Only MORLIN calibrates its internal sensor.
  const std::vector<std::size_t> sensors =
      g_iDFType == MORLIN ? std::vector<std::size_t>{0, 1, 2} : std::vector<std::size_t>{1, 2};
  for (const std::size_t sensor : sensors) {
    panel.chkTemp[sensor].Value = 1;
    panel.txtActualTemp[sensor].Text = std::to_string(kSensorCelsius);
  }
}

}  // namespace

void ScanAndCalibrate(NBCal& panel) {
  panel.chkUpdates.Value = 1;
  panel.tmrScan_Timer();
  TypeTypicalEntries(panel);
  panel.btnCalibrate_Click();
}

}  // namespace ombrelay::fuzz
