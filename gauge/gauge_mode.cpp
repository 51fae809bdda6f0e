#include "gauge/gauge_mode.h"

#include <array>

#include "gauge/manufacturer_access.h"
#include "shell/platform.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kOperationStatusWord = 0x0054;
constexpr std::int16_t kManufacturingStatusWord = 0x0057;
constexpr std::uint8_t kSecurityBits = 0x03;
constexpr std::uint8_t kCalibrationModeBit = 0x80;
// KELD_PLUS gets the calibration word this many times before it counts as refused.
constexpr int kKeldPlusAttempts = 2;

using StatusBlock = std::array<std::uint8_t, 256>;

// Bit 7 of byte 1 of the manufacturing status block, read into block; a failed read leaves
// block as it was.
bool ReadManufacturingStatusFlag(StatusBlock& block, std::int32_t waitMs) {
  WriteManufacturerAccess(kManufacturingStatusWord, g_iTargetAddress);
  g_oPlatform->Sleep(waitMs);
  std::int16_t length = 0;
  ReadMODData(block, length, g_iTargetAddress);
  return (block[1] & kCalibrationModeBit) != 0;
}

Status EnableMorlinCalibrationMode() {
  StatusBlock block{};
  bool inMode = ReadManufacturingStatusFlag(block, 5);
  if (!inMode) {
    WriteManufacturerAccess(g_iCalMode, g_iTargetAddress);
    g_oPlatform->Sleep(50);
    inMode = ReadManufacturingStatusFlag(block, 50);
  }
  g_bInCalMode = inMode;
  return inMode ? 0 : 1;
}

Status EnableKeldPlusCalibrationMode() {
  // The first, byte-wise read is only there to wake the word; its answer is not used.
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  g_oHost->ReadSMBusWord(g_iKeldPlusCalFlag, high, low, g_iTargetAddress);
  std::int16_t word = 0;
  g_oHost->ReadSMBusWord_(g_iKeldPlusCalFlag, word, g_iTargetAddress);
  for (int attempt = 0; attempt < kKeldPlusAttempts && !IsBitSet(word, g_iKeldPlusCalFlagBitPos);
       ++attempt) {
    WriteManufacturerAccess(g_iCalMode, g_iTargetAddress);
    g_oPlatform->Sleep(50);
    g_oHost->ReadSMBusWord_(g_iKeldPlusCalFlag, word, g_iTargetAddress);
  }
  g_bInCalMode = IsBitSet(word, g_iKeldPlusCalFlagBitPos);
  return g_bInCalMode ? 0 : 1;
}

}  // namespace

Status ReadOperationStatusSecurity(std::int16_t& mode) {
  if (WriteManufacturerAccess(kOperationStatusWord, g_iTargetAddress) != 0) {
    MsgBox("Not able to send operation status to MAC. Please check communication with part.");
    return 1;
  }
  g_oPlatform->Sleep(10);
  StatusBlock block{};
  std::int16_t length = 0;
  if (ReadMODData(block, length, g_iTargetAddress) != 0) {
    MsgBox("Not able to read Manufacturing Data Block requesting Operation Status.");
    return 1;
  }
  mode = static_cast<std::int16_t>(block[1] & kSecurityBits);
  return 0;
}

Status EnableCalibrationMode() {
  DrainBusErrors();
  switch (g_iDFType) {
    case MORLIN:
      return EnableMorlinCalibrationMode();
    case KELD_PLUS:
      return EnableKeldPlusCalibrationMode();
    default:
      return 0;
  }
}

Status ExitCalibrationModeCommand() {
  if (!g_bInCalMode) return 0;
  const Status status = WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
  g_oPlatform->Sleep(50);
  return status;
}

}  // namespace ombrelay
