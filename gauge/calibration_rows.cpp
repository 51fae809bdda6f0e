// The calibration area of MORLIN and KELD_PLUS: two 32-byte rows, each requested through
// ManufacturerAccess and carried on the dataflash access command.

#include <algorithm>
#include <array>

#include "gauge/calibration_dataflash.h"
#include "gauge/dataflash_rows.h"
#include "gauge/manufacturer_access.h"
#include "shell/platform.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

using Buffer = std::array<std::uint8_t, kCalDataSize>;

// The words that request the calibration area's two rows.
std::int16_t FirstCalibrationRow() {
  return RowWord(g_iCalSubclassID / kRowLength);
}
std::int16_t SecondCalibrationRow() {
  return static_cast<std::int16_t>(FirstCalibrationRow() + 1);
}

// The read-backs ask for a row's length; only what lands in buffer counts.
Status ReadBackRow(Buffer& buffer) {
  std::int16_t length = kRowLength;
  return g_oHost->ReadSMBusBlock_(g_iDFAccessFlashCmd, buffer, length, g_iTargetAddress);
}

}  // namespace

Status ReadCalRows() {
  DrainBusErrors();
  g_oPlatform->Sleep(50);
  WriteManufacturerAccess(FirstCalibrationRow(), g_iTargetAddress);
  g_oPlatform->Sleep(20);
  std::int16_t length = 0;
  const Status first =
      g_oHost->ReadSMBusBlock_(g_iDFAccessFlashCmd, g_abCalData, length, g_iTargetAddress);
  g_oPlatform->Sleep(100);
  DelaySeconds(g_sngFlashReadDelay);
  const Status result = first != 0 || length != kRowLength ? 1 : 0;

  WriteManufacturerAccess(SecondCalibrationRow(), g_iTargetAddress);
  DelaySeconds(g_sngFlashReadDelay);
  Buffer second{};
  g_oHost->ReadSMBusBlock_(g_iDFAccessFlashCmd, second, length, g_iTargetAddress);
  DelaySeconds(g_sngFlashReadDelay);
  std::copy_n(second.begin(), kRowLength, g_abCalData.begin() + kRowLength);
  return result;
}

Status WriteCalRows() {
  DrainBusErrors();
  WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
  g_oPlatform->Sleep(100);

  RequestRow(FirstCalibrationRow());
  g_oPlatform->Sleep(3);
  g_oHost->WriteSMBusBlock(g_iDFAccessFlashCmd, g_abCalData, kRowLength, g_iTargetAddress);
  g_oPlatform->Sleep(200);
  g_oHost->CheckForError();
  RequestRow(FirstCalibrationRow());
  Buffer firstReadBack{};
  ReadBackRow(firstReadBack);

  Buffer secondRow{};
  std::copy_n(g_abCalData.begin() + kRowLength, kRowLength, secondRow.begin());
  if (RequestRow(SecondCalibrationRow()) != 0) {
    MsgBox("Communication Error when Requesting Second Calibration Dataflash Row.");
    return 1;
  }
  const Status written =
      g_oHost->WriteSMBusBlock(g_iDFAccessFlashCmd, secondRow, kRowLength, g_iTargetAddress);
  g_oPlatform->Sleep(200);
  if (written != 0) MsgBox("Not able to Write Second Calibration row to DataFlash.");
  RequestRow(SecondCalibrationRow());
  Buffer secondReadBack{};
  if (ReadBackRow(secondReadBack) != 0) {
    MsgBox("Communications error reading second DF row for verification.");
  }

  // Both rows byte by byte, interleaved: the first difference in that order is the one shown.
  for (int i = 0; i < kRowLength; ++i) {
    if (g_abCalData[i] != firstReadBack[i]) {
      MsgBox("First Calibration Row written failed verification.");
      return 1;
    }
    if (g_abCalData[i + kRowLength] != secondReadBack[i]) {
      MsgBox("Second Calibration Row written failed verification.");
      return 1;
    }
  }
  return 0;
}

}  // namespace ombrelay
