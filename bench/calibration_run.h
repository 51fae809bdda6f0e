#pragma once
// One voltage and temperature calibration on a simulated gauge in real time, as an engineer
// runs it: start-up, the scan, the applied values typed in, the button, the scan afterwards.

#include <cstdint>
#include <optional>
#include <string>

#include "sim/family.h"

namespace ombrelay {

struct CalibrationRunResult {
  double wallMs = 0.0;
  double cpuMs = 0.0;
  // The waits the program asks for along the path: plain, pumping and the host's.
  double floorMs = 0.0;
  // Largest differences between applied and shown values after the calibration; nothing where
  // the family shows none.
  std::optional<double> maxVoltageErrorMv;
  std::optional<double> maxTemperatureErrorC;
  std::size_t busOperations = 0;
  // Message boxes shown on the way; a clean run shows none.
  std::size_t messages = 0;
};

CalibrationRunResult RunCalibration(sim::Family family, const std::string& appDir);

}  // namespace ombrelay
