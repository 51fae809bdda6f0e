#pragma once
// The calibration control: owns the calibration side of the plug-in, and on every Show brings
// itself up against whatever gauge is on the bus.

#include <cstdint>
#include <optional>
#include <string>

#include "calibration/voltage_temperature_correction.h"
#include "panel/calibration_controls.h"
#include "shell/host.h"

namespace ombrelay {

class Platform;

class NBCal : public CalibrationControls {
 public:
  // parent stands for the control's container, the host application that owns the bus; the
  // platform drives the scan timer and shows the boxes.
  NBCal(Host& parent, Platform& platform);
  ~NBCal();
  NBCal(const NBCal&) = delete;
  NBCal& operator=(const NBCal&) = delete;

  // Members for the host.
  std::string Caption() const { return "Ombrelay"; }
  void SetTargetAddress(std::int16_t nTargetAddr) { m_nTargetAddr = nTargetAddr; }
  std::int16_t TargetAddress() const { return m_nTargetAddr; }
  void SetZenoMAC(std::int16_t nZenoMAC) { m_nZenoMAC = nZenoMAC; }
  void SetTargetInfo(const std::string& sDevVer) { m_sTargetInfo = sDevVer; }
  bool GetConfigSection(const std::string& sDevVer, std::string& sDeviceConfigSection,
                        std::string& sVersionConfigSection) const;

  // Events.
  void UserControl_Show();
  void UserControl_EnterFocus();
  void UserControl_ExitFocus();

  void DisableCalibrationControls();
  void EnableCalibrationControls();

  // The grids and the page's arrangement for the device.
  void SetUpGGModeGrid();
  void SetUpDFGrid();
  void AlignTemperatureControls();
  void InitGrid(std::int16_t iTop, std::int16_t iLeft, std::int16_t iRows);
  void InitDFGrid(std::int16_t iTop, std::int16_t iLeft, std::int16_t iRecord);
  // The last row written; 0 after an error.
  std::int16_t AddMODBlocktoGrid(std::int16_t iStartRow, std::int16_t dataIndex);
  void TransferCurrentValuestoGrid(std::int16_t Index);
  void TransferDFValuestoGrid();
  void ArrangePageforDevice();

  // The live scan.
  void tmrScan_Timer();
  void ReadandDisplayAllDeviceDataonDisplay();
  void ReadandUpdateAllDFValues();
  // The block values into the measured boxes, cells summed into stack voltages.
  void TransferMODValuestoDisplay();

  // Every calibration runs between these two; both leave the scan and controls as the
  // calibration needs them.
  Status EnterCalibrationMode(std::int16_t mode = 0);
  Status ExitCalibrationMode();
  Status MapMorlinportInternalTemptoSBSTemp();

  // The voltage and temperature page.
  void btnCalibrate_Click();

  // The pages, and the calibrations of pack voltage, current and the offsets.
  void btncalpg1_Click();
  void btncalpage2_Click();
  void SStabCal_Click(std::int16_t previousTab);
  void btnPackVoltage_Click();
  void btnPackCurrent_Click();
  void btnCalCCCounter_Click();
  void btnBoardOffset_Click();

 private:
  void InitCalibrationControl();
  void StartupCalibrationPanel();
  void InitCalibrationPanelLayout();
  // The sealed check and the exit of calibration mode; false after a message when start-up
  // must end.
  bool MorlinReadyForCalibration();
  void SetCalibrationButtonsEnabled(bool enabled);
  void SetCalibrationCheckboxesEnabled(bool enabled);
  void ReadandDisplayDeviceValues();
  void ReadandDisplayKeldPlusValues();
  // The checks of the voltage and temperature page, filling the inputs of the calculation; the
  // message of the first that fails.
  std::optional<std::string> CheckVoltageTemperatureEntries(bool voltage, bool temperature,
                                                            VoltageCalInputs& voltages,
                                                            TemperatureCalInputs& temperatures);
  // The checks of the pack and current frames; the message of the first that fails.
  std::optional<std::string> CheckPackVoltageEntries();
  std::optional<std::string> CheckCurrentEntries();
  void ShowStackVoltages();
  void ShowCurrentAndTemperatures(bool withInternal);

  Host& parent_;
  Platform& platform_;
  std::int16_t m_nTargetAddr = 0;
  std::string m_sTargetInfo;
  std::int16_t m_nZenoMAC = 0;
  bool m_bUpdatesChecked = false;
};

// The version shown on the panel, "major.minor.0.revision".
struct PluginVersion {
  int major;
  int minor;
  int revision;
};
PluginVersion OmbrelayVersion();

}  // namespace ombrelay
