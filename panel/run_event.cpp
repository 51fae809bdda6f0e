#include "panel/run_event.h"

#include "shell/numeric.h"
#include "shell/platform.h"

namespace ombrelay {

void RunEvent(const std::function<void()>& handler) {
  try {
    handler();
  } catch (const RuntimeError& error) {
    MsgBox(std::string("Run-time error: ") + error.what(), MessageStyle::Error, "Ombrelay");
  }
}

}  // namespace ombrelay
