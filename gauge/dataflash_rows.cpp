#include "gauge/dataflash_rows.h"

#include "gauge/manufacturer_access.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {

std::int16_t RowWord(std::int32_t row) {
  return static_cast<std::int16_t>(0x0100 + row);
}

Status RequestRow(std::int16_t rowWord) {
  const Status status = WriteManufacturerAccess(rowWord, g_iTargetAddress);
  g_oPlatform->Sleep(3);
  return status;
}

}  // namespace ombrelay
