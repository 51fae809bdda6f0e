#include "bench/run_measures.h"

#include <sys/resource.h>

#include <chrono>
#include <span>

namespace ombrelay {
namespace {

// User and system time of this process so far, in milliseconds.
double CpuMs() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto ms = [](const timeval& t) { return t.tv_sec * 1000.0 + t.tv_usec / 1000.0; };
  return ms(usage.ru_utime) + ms(usage.ru_stime);
}

// The milliseconds of the host's Delay calls among operations: they belong to the floor as
// much as the platform's waits.
double HostDelayMs(std::span<const BusOperation> operations) {
  double ms = 0.0;
  for (const BusOperation& operation : operations) {
    if (operation.op == "Delay") ms += operation.len;
  }
  return ms;
}

}  // namespace

SliceMeasures MeasureSlice(const RecordingHost& host, const AccountingPlatform& platform,
                           const std::function<void()>& slice) {
  return MeasureSlice(host.Operations(), platform, slice);
}

SliceMeasures MeasureSlice(const std::vector<BusOperation>& all, const AccountingPlatform& platform,
                           const std::function<void()>& slice) {
  const std::size_t operationsBefore = all.size();
  const double waitedBefore = platform.WaitedMs();
  const std::size_t messagesBefore = platform.Messages();
  const double cpuBefore = CpuMs();
  const auto wallStart = std::chrono::steady_clock::now();
  slice();
  SliceMeasures measures;
  measures.wallMs =
      std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - wallStart)
          .count();
  measures.cpuMs = CpuMs() - cpuBefore;
  const auto operations = std::span(all).subspan(operationsBefore);
  measures.floorMs = platform.WaitedMs() - waitedBefore + HostDelayMs(operations);
  measures.busOperations = operations.size();
  measures.messages = platform.Messages() - messagesBefore;
  return measures;
}

nlohmann::ordered_json SliceFields(const SliceMeasures& measures) {
  return {
      {"wall_over_floor", measures.wallMs / measures.floorMs},
      {"cpu_over_wall", measures.cpuMs / measures.wallMs},
      {"bus_operations", measures.busOperations},
  };
}

}  // namespace ombrelay
