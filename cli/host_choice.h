#pragma once
// Which gauge a run talks to: a real bus, or a fresh simulated sample gauge in-process.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "shell/host.h"
#include "sim/family.h"

namespace ombrelay::cli {

struct HostChoice {
  std::string bus;                 // "/dev/i2c-N"; empty with a simulated gauge
  std::optional<sim::Family> sim;  // the simulated gauge's family
  bool sealed = false;             // the simulated gauge starts Sealed
  bool pec = false;                // packet error checking on the bus

  // How the run names the gauge to the user: the bus, or the simulated family.
  std::string Where() const;
};

// Opens the chosen host; nothing, with a sentence for the user in error, when it cannot.
using HostOpener = std::function<std::unique_ptr<Host>(const HostChoice&, std::string& error)>;

}  // namespace ombrelay::cli
