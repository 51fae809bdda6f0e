// The coulomb counter's own offset, read with its input shorted, and the board's, read on the
// normal input beyond the first; both scaled by the gauge's offset sample count.

#include "calibration/calibration_targets.h"
#include "calibration/current_pack_calibration.h"
#include "calibration/raw_capture.h"
#include "gauge/calibration_dataflash.h"
#include "gauge/manufacturer_access.h"
#include "gauge/manufacturer_blocks.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr std::uint8_t kRawStatus = 1;
constexpr std::uint8_t kShortedStatus = 2;
constexpr std::int16_t kHighestShortedCount = -5;
constexpr std::int16_t kLowestShortedCount = -450;
constexpr std::int16_t kLargestBoardCount = 300;

// The coulomb counter reading of a raw block: bytes 2 and 3, signed, low byte first.
std::int16_t CoulombCounter(const MODBuffer& buffer) {
  std::int16_t count = 0;
  JoinBytestoWord(buffer[3], buffer[2], count);
  return count;
}

void PatchSigned(const MODField& field, std::int16_t value) {
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  SplitWordtoBytes(value, high, low);
  PatchCalWord(field, high, low);
}

}  // namespace

Status CalibrateCCOffset() {
  if (g_iDFType == KELD || g_iDFType == QUILL) {
    if (RequestOffsetCalOutput() != 0) {
      MsgBox("Attempt to enter Raw Coulomb Counter Offset Cal failed. Calibration not performed.");
      return 1;
    }
  }
  g_oPlatform->Sleep(300);
  MODBuffer buffer{};
  std::int16_t length = 0;
  const Status status = ReadMODData(buffer, length, g_iTargetAddress);
  g_oPlatform->Sleep(10);
  if (buffer[1] != kShortedStatus || status != 0) {
    MsgBox(
        "Error reading Raw CC Shorted Calibration Data. Please check connection with gas gauge. "
        "Calibration not completed.");
    return 1;
  }
  const std::int16_t count = CoulombCounter(buffer);
  // A shorted input always reads a little below zero; zero or anything outside means current.
  if (count > kHighestShortedCount || count < kLowestShortedCount) {
    MsgBox(
        "Current is flowing in sense resistor.  Please ensure no current is flowing. Coulomb "
        "Counter Offset Calibration will abort.");
    return 1;
  }
  const std::int16_t offset = ToInt16(static_cast<double>(g_iCCOffsetSamples) * count);

  WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
  g_oPlatform->Sleep(100);
  // The patch goes onto what the gauge holds now.
  if (ReadCalDataflash() != 0) {
    MsgBox(
        "Error reading calibration Dataflash.  Please check communications. Calibration not "
        "completed.");
    return 1;
  }
  PatchSigned(CalTarget(kCCOffsetFields), offset);
  if (WriteCalDataflash() != 0) {
    MsgBox(
        "Error writing Coulomb Counter Offset Calibration values to Dataflash. Please ensure "
        "device is not sealed.");
    return 1;
  }
  return 0;
}

Status CalibrateBoardOffset() {
  const std::int16_t ccOffset = TextToInt16(CalTarget(kCCOffsetFields).sValue);
  if (g_iDFType == KELD) ReadKELDCalBlocks();

  MODBuffer buffer{};
  std::int16_t length = 0;
  ReadMODData(buffer, length, g_iTargetAddress);
  if (buffer[1] != kRawStatus || length != g_iRawCalDataBlockSize) {
    MsgBox("Device is not in raw cal mode before calibrating board offset.");
    return 1;
  }
  const std::int16_t count = CoulombCounter(buffer);
  if (count > kLargestBoardCount || count < -kLargestBoardCount) {
    MsgBox(
        "A large amount of current is flowing. This calibration is for board offset only. Board "
        "Offset Calibration will abort.");
    return 1;
  }
  // What the normal input shows beyond the coulomb counter's own offset.
  const std::int16_t scaled = ToInt16(static_cast<double>(g_iCCOffsetSamples) * count);
  const std::int16_t offset = ToInt16(static_cast<double>(scaled) - ccOffset);

  PatchSigned(CalTarget(kBoardOffsetFields), offset);
  Status result = 0;
  if (WriteCalDataflash() != 0) {
    MsgBox(
        "Error writing Board Offset Calibration values to Dataflash. Please ensure part is not "
        "sealed.");
    result = 1;
  }
  WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
  return result;
}

}  // namespace ombrelay
