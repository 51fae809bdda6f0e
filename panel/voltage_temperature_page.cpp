// The voltage and temperature page: every plausibility check on what the engineer typed and on
// what the gauge shows, then one capture, one calculation and one write.

#include <cmath>
#include <string>

#include "calibration/voltage_temperature_correction.h"
#include "gauge/cell_count.h"
#include "gauge/measurement_reads.h"
#include "panel/nbcal.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

// The entered stack voltage of the top configured row.
std::int16_t RowTop(const std::array<TextBox, 4>& voltages) {
  const int row = g_iNumCells - 1;
  if (row < 0 || row >= static_cast<int>(voltages.size())) {
    throw RuntimeError(kSubscriptOutOfRange);
  }
  return TextToInt16(voltages[static_cast<std::size_t>(row)].Text);
}

}  // namespace

void NBCal::btnCalibrate_Click() {
  try {
    DisableCalibrationControls();
    imgCalDoneBox.Visible = false;
    const bool voltage = chkVoltageCal.Value == 1;
    int ticked = 0;
    for (const CheckBox& box : chkTemp)
      ticked += box.Value;
    const bool temperature = ticked >= 1;

    VoltageCalInputs voltages;
    TemperatureCalInputs temperatures;
    if (const std::optional<std::string> refusal =
            CheckVoltageTemperatureEntries(voltage, temperature, voltages, temperatures)) {
      MsgBox(*refusal);
      EnableCalibrationControls();
      return;
    }

    if (EnterCalibrationMode(0) != 0) {
      ExitCalibrationMode();
      MsgBox("Can not set to calibration mode.");
      return;
    }
    if (CalibrateVoltageandTemperature(voltage, temperature, voltages, temperatures) != 0) {
      MsgBox("Voltage/Temperture Calibration Failed! ");
      ExitCalibrationMode();
      return;
    }
    ExitCalibrationMode();
    imgCalDoneBox.Visible = true;
  } catch (const RuntimeError& error) {
    MsgBox(std::string("Invalid value entered! Error description:") + error.what(),
           MessageStyle::Plain, "Calibration");
    EnableCalibrationControls();
    tmrScan.SetEnabled(true);
  }
}

std::optional<std::string> NBCal::CheckVoltageTemperatureEntries(
    bool voltage, bool temperature, VoltageCalInputs& voltages,
    TemperatureCalInputs& temperatures) {
  if (!voltage && !temperature) {
    return "Voltage and Temperature calibration selected but no check boxes checked. There is "
           "nothing to do.";
  }
  if (voltage) {
    if (ReadNumberofCells(g_iNumCells) != 0) {
      return "Unable to determine number of cells in use by reading Dataflash parameter System "
             "Configuration.  Please check communications with gas guage.";
    }
    txtCellCount.Text = std::to_string(g_iNumCells);
    ArrangePageforDevice();
    for (int i = 0; i < g_iNumCells && i < 4; ++i) {
      const auto row = static_cast<std::size_t>(i);
      const std::string n = std::to_string(i + 1);
      if (txtVoltage[row].Text.empty()) {
        return "Measured Cell voltage not entered for cell " + n +
               ". Please enter measured voltage.";
      }
      const std::string& measured = txtCalMeasVoltage[row].Text;
      if (measured == kErrRd || TextToInt16(measured) < (i + 1) * 1000) {
        return "Voltage Measured for Cell " + n +
               " by device is low or no communications. Please check.  Calibration will be "
               "terminated.";
      }
      const double entered = TextToDouble(txtVoltage[row].Text);
      if (entered < (i + 1) * 2799) {
        return "Voltage entered for cell voltage " + n +
               " appears low. Please check value entered.  Calibration will be terminated.";
      }
      if (entered > (i + 1) * 4500) {
        return "Voltage entered for cell voltage " + n +
               " appears high. Please check value entered.  Calibration will be terminated.";
      }
    }
    for (std::size_t row = 0; row < voltages.aiCellVoltage.size(); ++row)
      voltages.aiCellVoltage[row] = TextToInt16(txtVoltage[row].Text);
    voltages.iCellCount = g_iNumCells;
  }

  if (g_bBatteryVSupported) {
    if (txtBatMeasured.Text == kErrRd) {
      return "Measured Battery voltage is not available .  Please check.  Calibration will be "
             "terminated.";
    }
    const std::int16_t battery = TextToInt16(txtBatVoltageActual.Text);
    const std::int16_t rowTop = RowTop(txtVoltage);
    if (battery > ToInt16(rowTop + 6000)) {
      return "Measured Battery voltage is over 2 volts greater than stack voltage. Please "
             "check. Calibration will be terminiated.";
    }
    if (battery < ToInt16(rowTop - 8000)) {
      return "Measured Battery voltage is lower than 2 volts below stack voltage. Please check. "
             "Calibration will be terminiated.";
    }
    voltages.dBatteryVoltage = battery;
  }

  if (temperature) {
    for (std::size_t i = 0; i < chkTemp.size(); ++i) {
      if (chkTemp[i].Value != 1) continue;
      const std::string& sensor = chkTemp[i].Caption;
      if (txtActualTemp[i].Text.empty()) {
        return "Actual Temperature value not entered for " + sensor + "." +
               " Please enter actual temperature.";
      }
      const std::string& measuredText = txtMeasTemp[i].Text;
      if (measuredText == kErrRd || TextToDouble(measuredText) < 0) {
        return "Temperature Measured for " + sensor +
               " is low or no communications. Please correct. Calibration will be terminated.";
      }
      const double actual = TextToDouble(txtActualTemp[i].Text);
      if (actual > 85) {
        return "Temperature entered for " + sensor +
               " is high. Please correct. Calibration will be terminated.";
      }
      if (actual < 0) {
        return "Temperature entered for " + sensor +
               " is low. Please correct. Calibration will be terminated.";
      }
      if (std::fabs(TextToDouble(measuredText) - actual) > 24.0) {
        return "Temperature entered for " + sensor +
               " is more than allowed. Correction is approximately 12 deg K";
      }
    }
    for (std::size_t i = 0; i < chkTemp.size(); ++i) {
      if (chkTemp[i].Value == 1) {
        temperatures.adActual[i] = TextToDouble(txtActualTemp[i].Text);
        temperatures.adMeasured[i] = TextToDouble(txtMeasTemp[i].Text);
      } else {
        temperatures.adActual[i] = NoSensorValue;
      }
    }
  }
  return std::nullopt;
}

}  // namespace ombrelay
