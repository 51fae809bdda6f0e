#pragma once
// One command of ombrelay run in-process in real time on the console platform, as a script runs
// it, against a fresh simulated sample gauge: measured as one slice, its bus included.

#include <string>
#include <vector>

#include "bench/run_measures.h"

namespace ombrelay {

struct CommandRun {
  SliceMeasures measures;
  int exit = -1;
};

CommandRun RunCommand(const std::vector<std::string>& args, const std::string& appDir);

}  // namespace ombrelay
