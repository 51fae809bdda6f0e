#pragma once
// What every benchmark measures besides its own results, one slice of a run at a time (one
// button press or operation): its wall and CPU time, the waits that are its floor, its bus
// operations and the boxes it shows.

#include <cstddef>
#include <functional>
#include <nlohmann/json.hpp>

#include "bench/accounting_platform.h"
#include "hosts/recording_host.h"

namespace ombrelay {

struct SliceMeasures {
  double wallMs = 0.0;
  double cpuMs = 0.0;
  // The waits the program asks for along the slice: plain, pumping and the host's.
  double floorMs = 0.0;
  std::size_t busOperations = 0;
  // Message boxes shown on the way; a clean slice shows none.
  std::size_t messages = 0;
};

// Runs slice and measures it alone, on the host and platform it goes through.
SliceMeasures MeasureSlice(const RecordingHost& host, const AccountingPlatform& platform,
                           const std::function<void()>& slice);
// The same where the bus operations go into operations as they happen: a slice that opens its
// own bus.
SliceMeasures MeasureSlice(const std::vector<BusOperation>& operations,
                           const AccountingPlatform& platform, const std::function<void()>& slice);

// The fields every benchmark line gives about a slice: wall_over_floor, cpu_over_wall and
// bus_operations, in that order.
nlohmann::ordered_json SliceFields(const SliceMeasures& measures);

}  // namespace ombrelay
