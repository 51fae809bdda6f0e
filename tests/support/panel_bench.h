#pragma once
// A calibration panel on a simulated gauge, with its flows traced: bus, waits, boxes, and the
// panel's timer, controls and done mark where they change.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "panel/nbcal.h"
#include "tests/support/sim_bench.h"

namespace ombrelay::testing {

inline constexpr std::array kEveryFamily = {sim::Family::Keld, sim::Family::Quill,
                                            sim::Family::Morlin, sim::Family::KeldPlus};

// A family by its name, for the traces and the names of parameterised tests.
inline std::string Name(sim::Family family) {
  return std::string(sim::FamilyName(family));
}
inline std::string FamilyTestName(const ::testing::TestParamInfo<sim::Family>& info) {
  return Name(info.param);
}

struct PanelBench {
  explicit PanelBench(std::optional<sim::Family> family = sim::Family::Morlin,
                      const std::string& appdir = OMBRELAY_SOURCE_APPDIR);

  // Runs start-up, which must end without a box, and forgets its trace: what follows is a flow
  // of its own.
  void StartUp();
  // Start-up, one tick of the scan with chkUpdates checked, and the entries of a calibration
  // that every check passes: the stack voltages the bench applies, its battery voltage, and the
  // sensors that the scan fills ticked at 25 C. The trace starts afresh behind it.
  void ReadyToCalibrate();
  // The entries of ReadyToCalibrate alone.
  void TypeWhatTheBenchApplies();
  // The bench's current, and a scan that shows it.
  void ApplyCurrent(std::int16_t currentMa);
  std::vector<std::string> Trace() { return sim.trace.Lines(); }

  SimBench sim;
  NBCal panel;
};

}  // namespace ombrelay::testing
