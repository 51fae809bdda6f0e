#pragma once
// The calibration control: owns the calibration side of the plug-in, and on every Show brings
// itself up against whatever gauge is on the bus.

#include <cstdint>
#include <string>

#include "panel/calibration_controls.h"

namespace ombrelay {

class Host;
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
  void AlignTemperatureControls();

 private:
  void InitCalibrationControl();
  void StartupCalibrationPanel();
  void InitCalibrationPanelLayout();
  // The sealed check and the exit of calibration mode; false after a message when start-up
  // must end.
  bool MorlinReadyForCalibration();
  void SetCalibrationButtonsEnabled(bool enabled);
  void SetCalibrationCheckboxesEnabled(bool enabled);

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
