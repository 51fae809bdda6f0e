#include "gauge/calibration_layout.h"

#include "shell/shared_state.h"

namespace ombrelay {

std::int16_t CalBlockIndex() {
  if (g_bUseDataflashMap2) return 0;
  if (g_iDFType == KELD) return 1;
  if (g_iDFType == QUILL) return 2;
  return 0;
}

std::int16_t CalDataBase() {
  switch (g_iDFType) {
    case MORLIN:
    case KELD_PLUS:
      return static_cast<std::int16_t>(g_iCalSubclassID % 32);
    case KELD:
      return static_cast<std::int16_t>(g_iCalSubclassID % 64);
    default:
      return 0;
  }
}

}  // namespace ombrelay
