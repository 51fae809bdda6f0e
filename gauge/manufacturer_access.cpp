#include "gauge/manufacturer_access.h"

#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {

Status WriteManufacturerAccess(std::int16_t word, std::int16_t address) {
  const Status status = g_oHost->WriteSMBusWord_(g_bZenoMAC, word, address);
  g_oPlatform->Sleep(3);
  return status;
}

Status ReadMODData(std::span<std::uint8_t> buffer, std::int16_t& length, std::int16_t address) {
  return g_oHost->ReadSMBusBlock_(g_iManuDataCmd, buffer, length, address);
}

void DrainBusErrors() {
  while (g_oHost->CheckForError() != 0) {
  }
}

}  // namespace ombrelay
