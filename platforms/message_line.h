#pragma once
// Message boxes of runs without a user: each box is one line on a log, "message: plain: TEXT"
// or "message: error: TEXT", so that a script can follow what the panels said.

#include <iosfwd>
#include <string>

#include "shell/platform.h"

namespace ombrelay {

// Writes the line and flushes, so that the line is out before the run goes on or dies.
void WriteMessageLine(std::ostream& log, const std::string& text, MessageStyle style);

}  // namespace ombrelay
