#pragma once
// One ready gauge of each family, matching the configuration shipped in the application
// directory, so the bench and the tests have something to talk to.

#include <memory>

#include "sim/clock.h"
#include "sim/family.h"
#include "sim/gauge.h"

namespace ombrelay::sim {

std::unique_ptr<Gauge> MakeSampleGauge(Family family, Clock& clock);

}  // namespace ombrelay::sim
