#include "gauge/calibration_dataflash.h"

#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {

Status ReadCalDataflash() {
  switch (g_iDFType) {
    case KELD:
      return ReadKELDCalBlocks();
    case QUILL:
      return ReadCalSubclass(g_abCalData);
    case MORLIN:
    case KELD_PLUS:
      return ReadCalRows();
    default:
      return 0;
  }
}

Status WriteCalDataflash() {
  const ProgressReport progress("Writing calibration dataflash", 0);
  switch (g_iDFType) {
    case KELD:
      return WriteKELDCalBlocks();
    case QUILL:
      return WriteCalSubclass();
    case MORLIN:
    case KELD_PLUS:
      return WriteCalRows();
    default:
      return 0;
  }
}

}  // namespace ombrelay
