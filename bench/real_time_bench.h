#pragma once
// A benchmark's bench: one sample gauge of a family on the machine's clock, a recorded bus, and
// the console platform behind the accounting one, with the shared state pointed at the
// application directory.

#include <iostream>
#include <memory>
#include <string>

#include "bench/accounting_platform.h"
#include "hosts/recording_host.h"
#include "hosts/sim_host.h"
#include "platforms/console_platform.h"
#include "sim/clock.h"
#include "sim/family.h"
#include "sim/gauge.h"

namespace ombrelay {

struct RealTimeBench {
  RealTimeBench(sim::Family family, const std::string& appDir);
  RealTimeBench(const RealTimeBench&) = delete;
  RealTimeBench& operator=(const RealTimeBench&) = delete;

  sim::RealClock clock;
  std::unique_ptr<sim::Gauge> gauge;
  SimHost bus{clock};
  RecordingHost host{bus, [this] { return clock.NowMs(); }};
  ConsolePlatform console{std::cerr};
  AccountingPlatform platform{console};
};

}  // namespace ombrelay
