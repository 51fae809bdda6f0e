#pragma once
// One flow run clean, then again with one fault, each faulted run in a child process of its own:
// a crash or a hang there is counted instead of ending the campaign.

#include <cstddef>
#include <string>
#include <vector>

#include "bench/campaign_faults.h"
#include "bench/campaign_flows.h"

namespace ombrelay {

// The dataflash the campaign compares: the whole of every sample's, and some way past it.
inline constexpr std::size_t kCampaignDataflashBytes = 0x4000;

struct CleanRun {
  std::vector<BusOperation> operations;
  std::string outcome;
  std::size_t boxes = 0;
  sim::Bytes before;
  sim::Bytes after;
};

CleanRun RunClean(const CampaignFlow& flow, sim::Family family);

struct FaultedRun {
  bool crashed = false;
  bool hung = false;
  // A box, or the outcome itself, told the user of a failure.
  bool told = false;
  // The outcome or the dataflash differ from the clean run's.
  bool failed = false;
  // Bytes that hold neither what they held before nor what the clean run wrote there.
  std::size_t strayBytes = 0;
  std::size_t firstStrayAddress = 0;
  std::string outcome;
};

// Runs the flow from prepared, a bench already at the flow's start, with fault injected right
// before operation k of the clean run. prepared is left as it was.
FaultedRun RunFaulted(FlowBench& prepared, const CampaignFlow& flow, const CleanRun& clean,
                      std::size_t k, const Fault& fault);

}  // namespace ombrelay
