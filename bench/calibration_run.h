#pragma once
// Every calibration of the panel on a simulated gauge in real time, on one panel as an engineer
// runs them: start-up and the scan, voltage and temperature, the coulomb counter offset at no
// load, the board offset, the current at a discharge of 2 A, and the pack voltage.

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "bench/run_measures.h"
#include "sim/family.h"

namespace ombrelay {

// One calibration: its button press, measured alone, and how well the gauge agrees afterwards.
struct CalibrationRow {
  // "voltage_temperature", "cc_offset", "board_offset", "current" or "pack_voltage"
  std::string calibration;
  SliceMeasures measures;
  // Whether the calibration's done-mark showed.
  bool done = false;
  // The largest differences between applied and shown values afterwards, under their names in
  // the benchmark's lines; null where the family shows none.
  nlohmann::ordered_json errors;
};

struct CalibrationRun {
  std::vector<CalibrationRow> rows;  // in the order of the presses
  // Message boxes shown anywhere on the run, presses or not; a clean run shows none.
  std::size_t messages = 0;
};

CalibrationRun RunCalibrations(sim::Family family, const std::string& appDir);

}  // namespace ombrelay
