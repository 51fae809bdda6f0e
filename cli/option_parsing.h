#pragma once
// The command line's grammar: every command and option with its help, parsed by CLI11.

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "cli/options.h"

namespace ombrelay::cli {

// Parses args (without the program's name) into options. Nothing when the run may go on; else
// the exit status, after the help or the usage error has been written on out or err.
std::optional<int> ParseOptions(const std::vector<std::string>& args, Options& options,
                                std::ostream& out, std::ostream& err);

}  // namespace ombrelay::cli
