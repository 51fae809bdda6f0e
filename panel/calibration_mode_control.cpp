// The frame round every calibration: into calibration mode with fresh tables and raw values, and
// out again with the panel refreshed and the scan running. Also the host's way to read the
// internal sensor through the SBS Temperature word.

#include <string>

#include "calibration/raw_capture.h"
#include "gauge/absolute_dataflash.h"
#include "gauge/calibration_dataflash.h"
#include "gauge/gauge_mode.h"
#include "gauge/manufacturer_access.h"
#include "gauge/manufacturer_blocks.h"
#include "gauge/measurement_reads.h"
#include "gauge/value_conversion.h"
#include "panel/nbcal.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr const char* kCannotMapTemperature =
    "Unable to map internal temperature sensor to SBS temperature command.";
// Bits 3, 4 and 6 of System Configuration's second byte route the SBS Temperature word to an
// external sensor; clear, it reports the internal one.
constexpr std::uint8_t kInternalSensorMapping = 0xA7;

constexpr std::int32_t kSBSTemperature = 0x08;

bool RowStyle() {
  return g_iDFType == MORLIN || g_iDFType == KELD_PLUS;
}

}  // namespace

Status NBCal::EnterCalibrationMode(std::int16_t mode) {
  DisableCalibrationControls();
  tmrScan.SetEnabled(false);
  if (RowStyle()) {
    ReadCalRows();
    TransferCalDatatoTable();
  } else if (g_iDFType == KELD) {
    ReadandUpdateAllDFValues();
  }
  if (g_iDFType == MORLIN) {
    if (ReadAllMODBlocks() != 0) {
      MsgBox("Error reading measurements from device before entering calibration mode.");
    } else {
      TransferCurrentValuestoGrid(0);
      TransferCurrentValuestoGrid(1);
    }
  }
  if (g_iDFType == KELD_PLUS) ReadandDisplayKeldPlusValues();

  if (EnableCalibrationMode() != 0) {
    MsgBox("Unable to request device to output cal values.");
    return 1;
  }
  if (GatherRawCalValues(mode) != 0) {
    MsgBox(
        "Unable to gather raw calibration values from device. Please check communications with "
        "device.");
    return 1;
  }
  if (g_iDFType == KELD || g_iDFType == QUILL) {
    if (RequestRawCalOutput() != 0) {
      MsgBox("Could not enter Raw KELD Calibration Mode. This calibration was not performed.");
      return 1;
    }
    UpdateRawCalValues();
  }
  return 0;
}

Status NBCal::ExitCalibrationMode() {
  WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
  g_oPlatform->Sleep(10);
  if (RowStyle()) {
    // The word that switched the mode on switches it off.
    if (g_bInCalMode) {
      WriteManufacturerAccess(g_iCalMode, g_iTargetAddress);
      g_oPlatform->Sleep(10);
    }
    ReadandUpdateAllDFValues();
    if (g_iDFType == MORLIN) {
      g_oPlatform->PumpEvents();
      g_oPlatform->Sleep(200);
      if (ReadAllMODBlocks() != 0) {
        MsgBox("Error reading GG Mode data from pack when entering calibration.");
      } else {
        TransferCurrentValuestoGrid(0);
        TransferCurrentValuestoGrid(1);
      }
    }
    g_oPlatform->PumpEvents();
    if (g_iDFType == KELD_PLUS) {
      ReadandDisplayKeldPlusValues();
      EnableCalibrationControls();
    }
  }
  g_oPlatform->Sleep(1000);
  EnableCalibrationControls();
  ReadandDisplayAllDeviceDataonDisplay();
  g_oPlatform->Sleep(500);
  ReadandDisplayAllDeviceDataonDisplay();
  tmrScan_Timer();
  tmrScan.SetEnabled(true);
  return 0;
}

Status NBCal::MapMorlinportInternalTemptoSBSTemp() {
  if (!g_bIntTSSupported) return 0;
  std::uint8_t first = 0;
  std::uint8_t second = 0;
  if (ReadDFAbsolute(g_iSystemConfigAddress, first, second) != 0) {
    MsgBox(kCannotMapTemperature);
    txtMeasTemp[0].Text = kErrRd;
    return 0;
  }
  const std::uint8_t keptFirst = first;
  const std::uint8_t keptSecond = second;
  second &= kInternalSensorMapping;
  const Status written = WriteDFAbsolute(g_iSystemConfigAddress, first, second);
  g_oPlatform->Sleep(400);
  // The gauge needs one read of the word to take up the new mapping; what it gives is stale.
  g_oHost->ReadSMBusWord(kSBSTemperature, first, second, g_iTargetAddress);
  g_oPlatform->Sleep(400);
  if (written != 0) {
    txtMeasTemp[0].Text = kErrRd;
    MsgBox(std::string(kCannotMapTemperature) + " Error writing to DataFlash.");
    return 0;
  }
  g_oPlatform->PumpEvents();
  g_oPlatform->Sleep(800);
  g_oHost->ReadSMBusWord(kSBSTemperature, first, second, g_iTargetAddress);
  std::int16_t word = 0;
  JoinBytestoWord(first, second, word);
  txtMeasTemp[0].Text = FormatShortest((word - kZeroCelsiusTenths) / 10.0);
  const Status restored = WriteDFAbsolute(g_iSystemConfigAddress, keptFirst, keptSecond);
  g_oPlatform->Sleep(50);
  if (restored != 0) MsgBox("Error setting temperature mapping back to original state.");
  return 0;
}

}  // namespace ombrelay
