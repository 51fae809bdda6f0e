#include "bench/run_measures.h"

#include <sys/resource.h>

namespace ombrelay {

double CpuMs() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto ms = [](const timeval& t) { return t.tv_sec * 1000.0 + t.tv_usec / 1000.0; };
  return ms(usage.ru_utime) + ms(usage.ru_stime);
}

double HostDelayMs(std::span<const BusOperation> operations) {
  double ms = 0.0;
  for (const BusOperation& operation : operations) {
    if (operation.op == "Delay") ms += operation.len;
  }
  return ms;
}

}  // namespace ombrelay
