#include "shell/platform.h"

#include "shell/shared_state.h"

namespace ombrelay {

void MsgBox(const std::string& text, MessageStyle style, const std::string& title) {
  g_oPlatform->MessageBox(text, style, title);
}

}  // namespace ombrelay
