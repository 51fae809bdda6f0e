// KELD's calibration area: one 64-byte block on its own block command.

#include <array>

#include "gauge/calibration_dataflash.h"
#include "gauge/manufacturer_access.h"
#include "shell/platform.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kCalibrationBlockCommand = 0x58;
constexpr std::int16_t kBlockLength = 64;
constexpr int kReads = 9;
// Only the first half of the block is verified after a write.
constexpr int kVerifiedBytes = 32;

}  // namespace

Status ReadKELDCalBlocks() {
  for (int read = 1; read <= kReads; ++read) {
    std::int16_t length = 0;
    g_oHost->ReadSMBusBlock_(kCalibrationBlockCommand, g_abCalData, length, g_iTargetAddress);
    if (length == kBlockLength || read == kReads) break;
    DelaySeconds(g_sngFlashReadDelay);
    g_oPlatform->Sleep(100);
  }
  return 0;
}

Status WriteKELDCalBlocks() {
  WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
  g_oPlatform->Sleep(150);
  const Status written = g_oHost->WriteSMBusBlock(kCalibrationBlockCommand, g_abCalData,
                                                  kBlockLength, g_iTargetAddress);
  DelaySeconds(g_sngFlashWriteDelay);
  if (written != 0) {
    MsgBox(
        "Not able to Write First KELD Calibration block to DataFlash. Please check "
        "communications. Calibration values not written to Dataflash.");
  }
  std::array<std::uint8_t, kCalDataSize> readBack{};
  std::int16_t length = 0;
  g_oHost->ReadSMBusBlock_(kCalibrationBlockCommand, readBack, length, g_iTargetAddress);
  for (int i = 0; i < kVerifiedBytes; ++i) {
    if (readBack[i] != g_abCalData[i]) {
      MsgBox(
          "Read verification of first block written to Dataflash did not match. Please check "
          "communications. Calibration values incorrectly written to Dataflash.");
    }
  }
  return 0;
}

}  // namespace ombrelay
