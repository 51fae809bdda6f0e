#pragma once
// Before a command changes the gauge, a user at a terminal is asked; scripts, and --yes, are not.

#include <string>

#include "cli/environment.h"

namespace ombrelay::cli {

// True when the run may go on: yes given, standard input no terminal, or "y" answered to
// "ombrelay: about to WHAT. Continue? [y/N] " on standard error.
bool ConfirmChange(const std::string& what, bool yes, Environment& env);

}  // namespace ombrelay::cli
