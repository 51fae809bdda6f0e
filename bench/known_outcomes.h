#pragma once
// Faults whose untold outcome the flows' own algorithms give: a status they do not look at, a
// half of a block they do not read back, an answer only the bus's PEC could tell from a true
// one. The campaign counts such runs apart, each under its reason, so that what is left over is
// what the program got wrong.

#include <string>
#include <vector>

#include "bench/campaign_faults.h"
#include "hosts/bus_operation.h"
#include "sim/family.h"

namespace ombrelay {

struct KnownOutcome {
  std::string name;
  std::string why;
};

// Where a fault struck: the flow, the family, the clean run's operations and the index k of the
// one the fault came right before.
struct Strike {
  const std::string& flow;
  sim::Family family;
  const std::vector<BusOperation>& operations;
  std::size_t k;
  const Fault& fault;
};

// The reason a run struck so may change the dataflash or fail without a message, if it has one.
const KnownOutcome* KnownOutcomeOf(const Strike& strike);

// Every reason, in the order the campaign reports them.
const std::vector<KnownOutcome>& KnownOutcomes();

}  // namespace ombrelay
