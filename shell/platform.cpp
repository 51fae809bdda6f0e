#include "shell/platform.h"

#include <utility>

#include "shell/shared_state.h"

namespace ombrelay {

void MsgBox(const std::string& text, MessageStyle style, const std::string& title) {
  g_oPlatform->MessageBox(text, style, title);
}

ProgressReport::ProgressReport(std::string doing, int total)
    : doing_(std::move(doing)), total_(total) {
  Step(0);
}

ProgressReport::~ProgressReport() {
  if (g_oPlatform != nullptr) g_oPlatform->ProgressEnded();
}

void ProgressReport::Step(int done) {
  if (g_oPlatform != nullptr) g_oPlatform->Progress(doing_, done, total_);
}

}  // namespace ombrelay
