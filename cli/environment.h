#pragma once
// What a run of the command line takes from the world around it: the platform and clock the
// panels wait on, how a bus is opened, the three standard streams and whether a user sits at
// them. main gives the console's; tests give virtual time and string streams.

#include <iosfwd>
#include <string>

#include "cli/host_choice.h"
#include "shell/platform.h"
#include "sim/clock.h"

namespace ombrelay::cli {

struct Environment {
  Platform& platform;
  sim::Clock& clock;
  HostOpener openHost;
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  bool inIsTerminal = false;   // confirmations are asked only here
  bool errIsTerminal = false;  // progress is shown only here
  std::string defaultAppDir;   // the folder the program stands in
  std::string adaptersFolder;  // where the kernel lists its I2C adapters
};

// Exit statuses.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

}  // namespace ombrelay::cli
