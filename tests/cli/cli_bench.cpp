#include "tests/cli/cli_bench.h"

#include <sstream>

#include "cli/command_line.h"
#include "cli/host_opening.h"
#include "hosts/sim_host.h"
#include "sim/sample_gauges.h"

namespace ombrelay::testing {
namespace {

// A simulator host on a gauge that outlives it.
class KeptGaugeHost : public SimHost {
 public:
  KeptGaugeHost(sim::Clock& clock, sim::Gauge& gauge) : SimHost(clock) { Attach(&gauge); }
};

constexpr const char* kBusPath = "/dev/i2c-18";

}  // namespace

CliBench::CliBench(HostKind kind, sim::Family family, i2c_emulation::AdapterTraits traits)
    : gauge(sim::MakeSampleGauge(family, clock)), kind_(kind), family_(family) {
  if (kind == HostKind::Simulator) return;
  traits.smbusBlockRead = traits.smbusBlockRead && kind != HostKind::EmulatedBusWithoutBlockReads;
  device_.emplace(kBusPath,
                  std::make_shared<i2c_emulation::EmulatedI2cAdapter>(gauge.get(), traits));
}

CliRun CliBench::Run(std::vector<std::string> args) {
  return RunWith(std::move(args), false, "");
}

CliRun CliBench::RunAtTerminal(std::vector<std::string> args, const std::string& input) {
  return RunWith(std::move(args), true, input);
}

CliRun CliBench::RunWith(std::vector<std::string> args, bool terminal, const std::string& input) {
  if (kind_ == HostKind::Simulator) {
    args.insert(args.end(), {"--sim", std::string(sim::FamilyName(family_))});
  } else {
    args.insert(args.end(), {"--bus", kBusPath});
  }
  std::istringstream in(input);
  std::ostringstream out;
  std::ostringstream err;
  cli::Environment env{
      .platform = platform,
      .clock = clock,
      .openHost = [this, &err](const cli::HostChoice& choice,
                               std::string& error) { return MakeHost(choice, err, error); },
      .in = in,
      .out = out,
      .err = err,
      .inIsTerminal = terminal,
      .errIsTerminal = terminal,
      .defaultAppDir = OMBRELAY_SOURCE_APPDIR,
      .adaptersFolder = "/nonexistent",
  };
  CliRun run;
  run.exit = cli::RunCommandLine(args, env);
  run.out = out.str();
  run.err = err.str();
  run.json = nlohmann::json::parse(run.out, nullptr, false);
  if (run.json.is_discarded()) run.json = nullptr;
  return run;
}

std::unique_ptr<Host> CliBench::MakeHost(const cli::HostChoice& choice, std::ostream& err,
                                         std::string& error) {
  if (kind_ != HostKind::Simulator) return cli::OpenHost(choice, clock, err, error);
  if (choice.sealed) gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  return std::make_unique<KeptGaugeHost>(clock, *gauge);
}

}  // namespace ombrelay::testing
