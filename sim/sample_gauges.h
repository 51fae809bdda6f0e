#pragma once
// One ready gauge of each family, matching the configuration shipped in the application
// directory, so the bench and the tests have something to talk to: Unsealed, MORLIN and QUILL
// with 3 cells, KELD and KELD_PLUS with 4, plausible measurements at 25 C. Each has a converter
// of its own, a few percent off on every voltage, a degree or two on every sensor, a sense
// resistor a few percent off and coulomb counter offsets its stored ones do not match, and the
// nominal calibration of a perfect converter, so its reports are visibly off until the program
// calibrates it. The other calibration values are the sample's own, unlike any table defaults,
// so that a decoding that reads the wrong bytes shows.

#include <memory>

#include "sim/clock.h"
#include "sim/family.h"
#include "sim/gauge.h"

namespace ombrelay::sim {

std::unique_ptr<Gauge> MakeSampleGauge(Family family, Clock& clock);

}  // namespace ombrelay::sim
