#include "cli/host_choice.h"

namespace ombrelay::cli {

std::string HostChoice::Where() const {
  return sim ? "the simulated " + std::string(sim::FamilyName(*sim)) + " gauge"
             : "the gauge on " + bus;
}

}  // namespace ombrelay::cli
