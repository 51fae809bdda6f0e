#pragma once
// The calculator form: types the key and the message, presses the digest's button. No gauge.

#include "cli/options.h"
#include "cli/report.h"

namespace ombrelay::cli {

void Digest(const Options& options, Report& report);

}  // namespace ombrelay::cli
