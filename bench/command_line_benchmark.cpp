// ombrelay-command-line-benchmark: a whole voltage and temperature calibration, and an unseal,
// through the ombrelay command line against a simulated gauge of each family, in real time. One
// JSON object per family and command: how close the run comes to the waits the program must
// make, how little CPU it burns doing so, and its exit status.

#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "bench/command_line_run.h"
#include "security/auth_morlin.h"
#include "security/sha1_hex.h"
#include "shell/numeric.h"
#include "sim/sample_gauges.h"

namespace ombrelay {
namespace {

constexpr int kZeroCelsiusTenthsKelvin = 2732;

// What an engineer types for the family's fresh sample: its stack voltages, its battery where
// the page has one, and the sensors its scan fills at the temperatures they stand at.
std::vector<std::string> CalibrationArguments(sim::Family family) {
  sim::VirtualClock clock;
  const sim::Measurements applied = sim::MakeSampleGauge(family, clock)->AppliedMeasurements();
  const bool morlin = family == sim::Family::Morlin;
  const int cells = morlin || family == sim::Family::Quill ? 3 : 4;
  std::string stack;
  for (int cell = 0, sum = 0; cell < cells; ++cell) {
    sum += applied.cellMv[static_cast<std::size_t>(cell)];
    stack += (cell > 0 ? "," : "") + std::to_string(sum);
  }
  std::vector<std::string> args = {"--sim",
                                   std::string(sim::FamilyName(family)),
                                   "--yes",
                                   "calibrate",
                                   "voltage-temperature",
                                   "--cells",
                                   stack};
  if (morlin || family == sim::Family::KeldPlus)
    args.insert(args.end(), {"--battery", std::to_string(applied.batteryMv)});
  const std::vector<std::pair<const char*, std::size_t>> sensors =
      morlin ? std::vector<std::pair<const char*, std::size_t>>{{"internal", 0},
                                                                {"ext1", 1},
                                                                {"ext2", 2}}
             : std::vector<std::pair<const char*, std::size_t>>{{"ext1", 1}, {"ext2", 2}};
  for (const auto& [name, sensor] : sensors) {
    const double celsius = (applied.temperatures[sensor] - kZeroCelsiusTenthsKelvin) / 10.0;
    args.insert(args.end(), {"--temp", std::string(name) + "=" + FormatShortest(celsius)});
  }
  return args;
}

}  // namespace
}  // namespace ombrelay

int main(int argc, char* argv[]) {
  using namespace ombrelay;
  const std::string appDir = argc > 1 ? argv[1] : OMBRELAY_APPDIR;
  // libcrypto loads its providers on the first digest of a process: not the first unseal's cost.
  SHA1_BytesHexHash({});
  bool clean = true;
  for (const sim::Family family :
       {sim::Family::Keld, sim::Family::Quill, sim::Family::Morlin, sim::Family::KeldPlus}) {
    const std::string name(sim::FamilyName(family));
    const std::vector<std::pair<const char*, std::vector<std::string>>> commands = {
        {"calibrate_voltage_temperature", CalibrationArguments(family)},
        {"unseal",
         {"--sim", name, "--sealed", "--yes", "unseal", "--key", AuthMorlin::kDefaultKey}},
    };
    for (const auto& [command, args] : commands) {
      const CommandRun run = RunCommand(args, appDir);
      nlohmann::ordered_json line = {{"family", name}, {"command", command}};
      line.update(SliceFields(run.measures));
      line["exit"] = run.exit;
      std::cout << line.dump() << std::endl;
      clean = clean && run.exit == 0 && run.measures.messages == 0;
    }
  }
  return clean ? 0 : 1;
}
