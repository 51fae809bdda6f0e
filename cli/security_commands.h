#pragma once
// The commands of the security panel: each starts the panel as a show of it does, types the key
// into its box (which checks it as the focus leaves) and presses the button.

#include "cli/options.h"
#include "cli/report.h"
#include "cli/session.h"

namespace ombrelay::cli {

void Secure(Session& session, const Options& options, Report& report);

}  // namespace ombrelay::cli
