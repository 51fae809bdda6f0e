#include "panel/nbcal.h"

#include "calibration/calibration_tables.h"
#include "config/device_configuration.h"
#include "config/identification.h"
#include "gauge/cell_count.h"
#include "gauge/gauge_mode.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kTargetAddress = 23;
// The SEC1 and SEC0 bits of a sealed gauge.
constexpr std::int16_t kSealed = 3;

}  // namespace

NBCal::NBCal(Host& parent, Platform& platform) : parent_(parent), platform_(platform) {
  tmrScan.Tick = [this] { tmrScan_Timer(); };
  platform_.AttachTimer(tmrScan);
}

NBCal::~NBCal() {
  platform_.DetachTimer(tmrScan);
}

bool NBCal::GetConfigSection(const std::string& sDevVer, std::string& sDeviceConfigSection,
                             std::string& sVersionConfigSection) const {
  return ombrelay::GetConfigSection(sDevVer, sDeviceConfigSection, sVersionConfigSection);
}

void NBCal::UserControl_Show() {
  InitCalibrationControl();
}

void NBCal::UserControl_EnterFocus() {
  chkUpdates.Value = m_bUpdatesChecked ? 1 : 0;
}

void NBCal::UserControl_ExitFocus() {
  m_bUpdatesChecked = chkUpdates.Value == 1;
  chkUpdates.Value = 0;
}

void NBCal::InitCalibrationControl() {
  g_oHost = &parent_;
  g_oPlatform = &platform_;
  m_nTargetAddr = kTargetAddress;
  StartupCalibrationPanel();
}

void NBCal::StartupCalibrationPanel() {
  imgCalDoneBox.Visible = false;
  m_bUpdatesChecked = false;
  g_iTargetAddress = kTargetAddress;
  m_nTargetAddr = kTargetAddress;
  InitCalibrationPanelLayout();

  if (CheckDeviceResponds() != 0) {
    MsgBox(
        "Unable to communicate with device.  Please ensure device is connected. After "
        "communications is established, close and restart Quvara.  Device will auto detect "
        "properly on startup.",
        MessageStyle::Error);
  }
  CalInit();
  ReadDeviceIdentification(g_iTargetAddress);
  if (LoadConfigurationforDevice() != 0) return;

  DisableCalibrationControls();
  SetUpDFGrid();
  DFGrid.Visible = true;
  if (g_iDFType == MORLIN) {
    displaygrid.Visible = true;
    SetUpGGModeGrid();
    if (!MorlinReadyForCalibration()) {
      EnableCalibrationControls();
      return;
    }
  }
  DisableCalibrationControls();
  ReadandUpdateAllDFValues();

  if (ReadNumberofCells(g_iNumCells) != 0) {
    MsgBox("Unable to determine number of cells in use. Please check communications with device.");
    EnableCalibrationControls();
    return;
  }
  ArrangePageforDevice();
  const std::string packVoltage = std::to_string(ToInt16(g_iNumCells * 4000.0));
  txtPackActualVoltage.Text = packVoltage;
  if (g_bBatteryVSupported) txtBatVoltageActual.Text = packVoltage;
  txtCellCount.Text = std::to_string(g_iNumCells);
  if (g_iDFType == MORLIN || g_iDFType == KELD_PLUS) ExitCalibrationModeCommand();
  ReadandDisplayAllDeviceDataonDisplay();
  tmrScan.SetEnabled(true);
  tmrScan_Timer();

  g_iCCOffsetSamples = TextToInt16(g_atCalParameters[0].atFields[9].sValue);
  EnableCalibrationControls();
}

bool NBCal::MorlinReadyForCalibration() {
  // A failed read leaves the mode at 0 and start-up goes on.
  std::int16_t security = 0;
  ReadOperationStatusSecurity(security);
  if (security == kSealed) {
    MsgBox(
        "Pack is sealed. Please unseal device before performing calibration. Close and restart "
        "Quvara after unsealing so device and firmware version is detected correctly.");
    return false;
  }
  if (ExitCalibrationModeCommand() != 0) {
    MsgBox(
        "Unable to confirm device is executing firmware. Please check communications. Close "
        "and restart Quvara after communications is established.");
    return false;
  }
  return true;
}

void NBCal::InitCalibrationPanelLayout() {
  SStabCal.Tab = 0;
  for (Picture& page : picCalibration) {
    page.Top = 450;
    page.Left = 0;
    page.Height = 9200;
    page.Width = 9950;
  }
  picCalibration[0].Visible = true;
  picCalibration[1].Visible = false;
  SetCalibrationButtonsEnabled(true);
  AlignTemperatureControls();
  lblVTCalibration.Caption =
      "Voltage: Enter actual cell voltages using stack ground as reference.  Cells configured for "
      "use are active. Check voltage calibration checkbox.\r\n\r\nTemperature: Enter actual "
      "sensor temperatures.  Check to include in calibration.\r\nClick Voltage/Temperature "
      "calibration button to calibrate.";
  const PluginVersion version = OmbrelayVersion();
  txtVersion.Caption = "Version: " + std::to_string(version.major) + "." +
                       std::to_string(version.minor) + ".0." + std::to_string(version.revision) +
                       " Tarvex Ombrelay";
}

void NBCal::DisableCalibrationControls() {
  SetCalibrationButtonsEnabled(false);
  SetCalibrationCheckboxesEnabled(false);
}

void NBCal::EnableCalibrationControls() {
  SetCalibrationButtonsEnabled(true);
  SetCalibrationCheckboxesEnabled(true);
}

void NBCal::SetCalibrationButtonsEnabled(bool enabled) {
  for (Button* button : CalibrationButtons())
    button->Enabled = enabled;
}

void NBCal::SetCalibrationCheckboxesEnabled(bool enabled) {
  chkVoltageCal.Enabled = enabled;
  for (CheckBox& box : chkTemp)
    box.Enabled = enabled;
}

}  // namespace ombrelay
