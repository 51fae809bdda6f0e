#include "panel/nbcal.h"

namespace ombrelay {

PluginVersion OmbrelayVersion() {
  return {OMBRELAY_VERSION_MAJOR, OMBRELAY_VERSION_MINOR, OMBRELAY_VERSION_PATCH};
}

}  // namespace ombrelay
