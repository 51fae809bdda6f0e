#pragma once
// One voltage and temperature calibration on a simulated gauge in real time, as an engineer
// runs it: start-up, the scan, the applied values typed in, the button, the scan afterwards.

#include <optional>
#include <string>

#include "bench/run_measures.h"
#include "sim/family.h"

namespace ombrelay {

struct CalibrationRunResult {
  SliceMeasures measures;
  // Largest differences between applied and shown values after the calibration; nothing where
  // the family shows none.
  std::optional<double> maxVoltageErrorMv;
  std::optional<double> maxTemperatureErrorC;
};

CalibrationRunResult RunCalibration(sim::Family family, const std::string& appDir);

}  // namespace ombrelay
