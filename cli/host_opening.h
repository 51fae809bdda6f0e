#pragma once
// The one place where the command line opens a bus: the kernel's i2c-dev interface for --bus, a
// fresh sample gauge of the simulator for --sim.

#include <iosfwd>
#include <memory>
#include <string>

#include "cli/host_choice.h"
#include "sim/clock.h"

namespace ombrelay::cli {

// The simulated gauge, and the waits of a real bus's host, run on clock; a real bus tells each
// failed transfer on err, in a line.
std::unique_ptr<Host> OpenHost(const HostChoice& choice, sim::Clock& clock, std::ostream& err,
                               std::string& error);

}  // namespace ombrelay::cli
