#pragma once
// A bench on a virtual clock: one simulated gauge (or none) on a recorded bus, the virtual
// platform, and the shared state pointed at them and at an application directory.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/recording_host.h"
#include "hosts/sim_host.h"
#include "platforms/virtual_platform.h"
#include "sim/clock.h"
#include "sim/family.h"
#include "sim/gauge.h"
#include "tests/support/flow_trace.h"

namespace ombrelay::testing {

// A message box as the user saw it.
struct Shown {
  std::string text;
  MessageStyle style;
  bool operator==(const Shown&) const = default;
};
std::vector<Shown> Boxes(const VirtualPlatform& platform);

// Matches for SimBench::After: the operations on a command, those that carry a word.
std::function<bool(const BusOperation&)> OnCommand(std::int32_t command);
std::function<bool(const BusOperation&)> OnWord(std::uint16_t word);

class SimBench {
 public:
  // With no family the bus has no gauge on it. appdir is the application directory holding
  // config.ini; the shipped one by default.
  explicit SimBench(std::optional<sim::Family> family = sim::Family::Morlin,
                    const std::string& appdir = OMBRELAY_SOURCE_APPDIR);
  ~SimBench();
  SimBench(const SimBench&) = delete;
  SimBench& operator=(const SimBench&) = delete;

  // The texts of the boxes shown so far.
  std::vector<std::string> MessageTexts() const;
  // The recorded operations whose name is op.
  std::vector<BusOperation> OperationsNamed(const std::string& op) const;
  // Forgets the bus record, the boxes shown and the trace: what follows is a flow of its own.
  void Restart();
  // Runs then() once, right after the nth operation from now that matches, or that is named op:
  // a fault that strikes mid-way.
  void After(std::function<bool(const BusOperation&)> matches, int nth, std::function<void()> then);
  void After(const std::string& op, int nth, std::function<void()> then);

  sim::VirtualClock clock;
  VirtualPlatform platform{clock};
  SimHost bus{clock};
  RecordingHost host{bus, [this] { return clock.NowMs(); }};
  std::unique_ptr<sim::Gauge> gauge;
  // Everything the bus and the platform saw, in order.
  FlowTrace trace;
  // Called after each bus operation has been recorded.
  std::function<void(const BusOperation&)> afterOperation;
};

}  // namespace ombrelay::testing
