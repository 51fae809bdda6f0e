#include "gauge/dataflash_rows.h"

#include <array>

#include "gauge/manufacturer_access.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {

std::int16_t RowWord(std::int32_t row) {
  return static_cast<std::int16_t>(kFirstRowWord + row);
}

Status RequestRow(std::int16_t rowWord) {
  const Status status = WriteManufacturerAccess(rowWord, g_iTargetAddress);
  g_oPlatform->Sleep(3);
  return status;
}

void StartAbsoluteRead() {
  WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
  g_oPlatform->Sleep(50);
  std::array<std::uint8_t, kCalDataSize> unused{};
  std::int16_t length = 0;
  g_oHost->ReadSMBusBlock_(g_iDFAccessFlashCmd, unused, length, g_iTargetAddress);
  g_oPlatform->Sleep(50);
}

bool ReadRow(std::span<std::uint8_t> buffer, Status& status, std::int16_t& length) {
  length = 0;
  status = g_oHost->ReadSMBusBlock_(g_iDFAccessFlashCmd, buffer, length, g_iTargetAddress);
  return status == 0 && length == kRowLength;
}

Status WriteRow(std::span<const std::uint8_t> row) {
  const Status status =
      g_oHost->WriteSMBusBlock(g_iDFAccessFlashCmd, row, kRowLength, g_iTargetAddress);
  g_oPlatform->Sleep(200);
  return status;
}

}  // namespace ombrelay
