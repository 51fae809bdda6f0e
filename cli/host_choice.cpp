#include "cli/host_choice.h"

namespace ombrelay::cli {

std::string HostChoice::Where() const {
  return sim ? "the simulated " + std::string(sim::FamilyName(*sim)) + " gauge" : bus;
}

}  // namespace ombrelay::cli
