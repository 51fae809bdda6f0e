#pragma once
// The fuzzer's run against a simulated sample gauge, its answers written down as the gauge-reply
// fuzzer's bytes: the seeds of that fuzzer, and what its host must answer alike.

#include <cstdint>
#include <vector>

#include "platforms/virtual_platform.h"
#include "sim/family.h"

namespace ombrelay::fuzz {

struct SampleRun {
  std::vector<std::uint8_t> replies;
  std::vector<RecordedMessage> messages;
  bool calibrated = false;  // the calibration's done mark showed
};

// Start-up, the scan tick and the calibration, with the bench applying the pack and the
// temperatures the calibration's entries describe.
SampleRun RecordSampleRun(sim::Family family);

}  // namespace ombrelay::fuzz
