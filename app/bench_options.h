#pragma once
// The bench's command line.

#include <QString>
#include <optional>

#include "sim/family.h"

class QCoreApplication;

namespace ombrelay {

struct BenchOptions {
  sim::Family family = sim::Family::Morlin;
  QString appDir;          // holds plugins/libombrelay.so
  QString busLog;          // empty: no log file
  QString screenshot;      // empty: an ordinary interactive run
  bool calibrate = false;  // with a screenshot: calibrate before it is taken
};

// Exit statuses of the bench.
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

// Parses the command line of app. --help and --version print and exit there and then; an
// unusable option is reported on standard error and gives nothing.
std::optional<BenchOptions> ParseBenchOptions(const QCoreApplication& app);

}  // namespace ombrelay
