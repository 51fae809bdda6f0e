#pragma once
// Runs of the command line in-process on virtual time, against one gauge kept across runs, as an
// engineer runs one command after another on the same gauge. How each run reaches the gauge is
// the host kind: made in one place, so that the same tables run over any kind.

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/host_choice.h"
#include "i2c_emulation/device_table.h"
#include "platforms/virtual_platform.h"
#include "sim/clock.h"
#include "sim/family.h"
#include "sim/gauge.h"

namespace ombrelay::testing {

// The simulator in-process, or the kept gauge behind an emulated /dev/i2c bus that the run opens
// with --bus, with or without SMBus block reads.
// A key the tests change to, unlike the gauge's own.
inline constexpr const char* kNewKey = "00112233445566778899AABBCCDDEEFF";

enum class HostKind { Simulator, EmulatedBus, EmulatedBusWithoutBlockReads };

struct CliRun {
  int exit = -1;
  std::string out;
  std::string err;
  // Standard output read as one JSON object; null when it is not one.
  nlohmann::json json;
};

class CliBench {
 public:
  // traits: what the emulated bus's adapter can do, for the bus kinds.
  CliBench(HostKind kind, sim::Family family, i2c_emulation::AdapterTraits traits = {});

  // One run with these arguments, then --sim FAMILY or --bus PATH, as a script runs it: no
  // terminal.
  CliRun Run(std::vector<std::string> args);
  // The same with a user at a terminal, who types input.
  CliRun RunAtTerminal(std::vector<std::string> args, const std::string& input);

  // Applies the change to what the bench applies to the gauge.
  template <typename Change>
  void Apply(Change change) {
    sim::Measurements applied = gauge->AppliedMeasurements();
    change(applied);
    gauge->ApplyMeasurements(applied);
  }

  sim::VirtualClock clock;
  VirtualPlatform platform{clock};
  std::unique_ptr<sim::Gauge> gauge;

 private:
  CliRun RunWith(std::vector<std::string> args, bool terminal, const std::string& input);
  // The host of one run, on the kept gauge.
  std::unique_ptr<Host> MakeHost(const cli::HostChoice& choice, std::ostream& err,
                                 std::string& error);

  HostKind kind_;
  sim::Family family_;
  // The emulated bus, for the bus kinds.
  std::optional<i2c_emulation::RegisteredDevice> device_;
};

}  // namespace ombrelay::testing
