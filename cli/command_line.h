#pragma once
// The command line's entry point: parses, asks where a change needs asking, opens the bus, runs
// the command on the panels and reports. Everything it takes from the world is in env.

#include <string>
#include <vector>

#include "cli/environment.h"

namespace ombrelay::cli {

// args without the program's name; the result is the exit status.
int RunCommandLine(const std::vector<std::string>& args, Environment& env);

}  // namespace ombrelay::cli
