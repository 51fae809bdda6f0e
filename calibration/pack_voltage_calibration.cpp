// The pack pin's gain: the voltage measured there over the raw reading, scaled to 65536.

#include "calibration/calibration_targets.h"
#include "calibration/current_pack_calibration.h"
#include "gauge/calibration_dataflash.h"
#include "gauge/manufacturer_access.h"
#include "gauge/measurement_reads.h"
#include "shell/numeric.h"
#include "shell/platform.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kRawBlock = 2;
constexpr std::size_t kRawPackField = 10;
constexpr double kLowestRawPack = 50.0;
constexpr double kLargestGain = 65535.0;

}  // namespace

Status CalibratePackVoltage(double actual) {
  if ((g_iDFType == KELD || g_iDFType == QUILL || g_iDFType == KELD_PLUS) &&
      !g_sPackVoltageReadCommand.empty() && g_bPackVSupported) {
    // Only proves that the device answers: the value goes no further.
    std::string value;
    if (readmeasurementfromdevice(g_sPackVoltageReadCommand, "U2", value) != 0) {
      MsgBox("Not able to read Pack Voltage from device. Pack Voltage not calibrated.");
      return 1;
    }
  }
  // KELD and QUILL have no formula for the gain: what the gauge holds is written back as it is.
  if (g_iDFType == MORLIN || g_iDFType == KELD_PLUS) {
    const double rawPack = TextToDouble(g_atMODBlocks[kRawBlock].atFields[kRawPackField].sValue);
    if (rawPack <= kLowestRawPack) {
      MsgBox(
          "Pack Gain raw calibration value is low.  Pack Calibration not performed. Please try "
          "again.");
      return 1;
    }
    // Unsigned all the way: gains up to 65535 are stored.
    const double gain = RoundHalfEven(actual / rawPack * 65536.0);
    if (gain > kLargestGain) {
      MsgBox("Pack voltage correction is beyond allowed range.  Calibration not completed.");
      return 1;
    }
    const auto whole = static_cast<std::uint32_t>(gain);
    PatchCalWord(CalTarget(kPackGainFields), static_cast<std::uint8_t>(whole / 256),
                 static_cast<std::uint8_t>(whole & 0xFF));
  }
  if (WriteCalDataflash() != 0) {
    MsgBox(
        "Failed to update Dataflash with new Pack Voltage Correction. Pack Calibration not "
        "completed.");
    return 1;
  }
  WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
  g_oPlatform->Sleep(100);
  return 0;
}

}  // namespace ombrelay
