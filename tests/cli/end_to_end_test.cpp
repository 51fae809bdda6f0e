// Every command on every family, one after the other on one gauge as an engineer runs them,
// read back through --json: the outcome, what the panel showed against what the bench applies,
// and the gauge's own state.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "security/auth_morlin.h"
#include "shell/numeric.h"
#include "tests/cli/cli_bench.h"

namespace ombrelay {
namespace {

using testing::CliBench;
using testing::CliRun;
using testing::HostKind;
using testing::kNewKey;

struct Gauge {
  sim::Family family;
  const char* familyName;  // as identify shows it
  int cells;
  // The --temp sensors the scan fills on this family, so that they can be calibrated.
  std::vector<std::string> sensors;
  bool battery;         // the page has the battery voltage row
  bool packCalibrated;  // the pack gain follows the calibration
};

struct Case {
  HostKind host;
  Gauge gauge;
};

double Value(const CliRun& run, const std::string& control) {
  return TextToDouble(run.json.at("values").at(control).get<std::string>());
}

std::string Text(const CliRun& run, const std::string& control) {
  return run.json.at("values").at(control).get<std::string>();
}

// The run succeeded and said so in its report, with no box shown.
::testing::AssertionResult Succeeded(const CliRun& run) {
  if (run.exit == 0 && run.json.is_object() && run.json["outcome"] == "succeeded" &&
      run.json["messages"].empty())
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "exit " << run.exit << "\n" << run.out << run.err;
}

// The stack voltages the bench applies, bottom cell first.
std::vector<int> Stack(const sim::Measurements& applied, int cells) {
  std::vector<int> stack;
  for (int cell = 0, sum = 0; cell < cells; ++cell)
    stack.push_back(sum += applied.cellMv[static_cast<std::size_t>(cell)]);
  return stack;
}

// What the engineer types for a voltage and temperature calibration, every sensor at 26.8 C.
std::vector<std::string> VoltageTemperatureArguments(const sim::Measurements& applied,
                                                     const Gauge& gauge) {
  std::string cells;
  for (const int each : Stack(applied, gauge.cells))
    cells += (cells.empty() ? "" : ",") + std::to_string(each);
  std::vector<std::string> args = {"calibrate", "voltage-temperature", "--cells", cells};
  if (gauge.battery) args.insert(args.end(), {"--battery", std::to_string(applied.batteryMv)});
  for (const std::string& sensor : gauge.sensors)
    args.insert(args.end(), {"--temp", sensor + "=26.8"});
  return args;
}

std::string HostName(HostKind host) {
  switch (host) {
    case HostKind::Simulator:
      return "simulator";
    case HostKind::EmulatedBus:
      return "bus";
    case HostKind::EmulatedBusWithoutBlockReads:
      return "bus_without_block_reads";
  }
  return "";
}

std::string Named(const Case& each) {
  return std::string(each.gauge.familyName) + "_" + HostName(each.host);
}

class EndToEnd : public ::testing::TestWithParam<Case> {
 protected:
  CliRun Run(std::vector<std::string> args) {
    args.insert(args.begin(), {"--json", "--yes"});
    return bench.Run(std::move(args));
  }

  const Gauge& gauge = GetParam().gauge;
  CliBench bench{GetParam().host, GetParam().gauge.family};
};

TEST_P(EndToEnd, IdentifyAndStatusShowTheGauge) {
  const CliRun identify = Run({"identify"});
  ASSERT_TRUE(Succeeded(identify));
  EXPECT_EQ(Text(identify, "family"), gauge.familyName);
  EXPECT_EQ(Text(identify, "txtCellCount"), std::to_string(gauge.cells));
  EXPECT_TRUE(identify.json["writes"].size() > 0);

  bench.Apply([](sim::Measurements& applied) { applied.currentMa = -1234; });
  const CliRun status = Run({"status"});
  ASSERT_TRUE(Succeeded(status));
  // Off by the sense resistor's error until calibrated, but the gauge's reading all the same.
  EXPECT_NEAR(Value(status, "txtMeasuredCurrent"), -1234, 100);
  EXPECT_TRUE(
      status.json["values"].contains("txtCalMeasVoltage(" + std::to_string(gauge.cells - 1) + ")"));
  EXPECT_FALSE(
      status.json["values"].contains("txtCalMeasVoltage(" + std::to_string(gauge.cells) + ")"));
}

TEST_P(EndToEnd, CalibrationsMakeTheScanShowWhatTheBenchApplies) {
  bench.Apply([](sim::Measurements& applied) {
    applied.temperatures.fill(3000);  // 26.8 C
    applied.currentMa = 0;
  });
  const sim::Measurements applied = bench.gauge->AppliedMeasurements();
  const std::vector<int> stack = Stack(applied, gauge.cells);
  const CliRun voltages = Run(VoltageTemperatureArguments(applied, gauge));
  ASSERT_TRUE(Succeeded(voltages));
  EXPECT_EQ(Text(voltages, "imgCalDoneBox"), "shown");
  for (std::size_t row = 0; row < stack.size(); ++row)
    EXPECT_NEAR(Value(voltages, "txtCalMeasVoltage(" + std::to_string(row) + ")"), stack[row], 1);
  if (gauge.battery) {
    EXPECT_NEAR(Value(voltages, "txtBatMeasured"), applied.batteryMv, 1);
  }
  for (std::size_t row = 0; row < 5; ++row) {
    const std::string box = "txtActualTemp(" + std::to_string(row) + ")";
    if (voltages.json["values"].contains(box)) {
      EXPECT_NEAR(Value(voltages, "txtMeasTemp(" + std::to_string(row) + ")"), 26.8, 0.2) << row;
    }
  }

  // Each run starts the panel anew, which QUILL needs between the two offsets.
  for (const char* offset : {"cc-offset", "board-offset"})
    ASSERT_TRUE(Succeeded(Run({"calibrate", offset}))) << offset;
  bench.Apply([](sim::Measurements& now) { now.currentMa = -2000; });
  const CliRun current = Run({"calibrate", "current", "--ma", "-2000"});
  ASSERT_TRUE(Succeeded(current));
  EXPECT_NEAR(Value(current, "txtMeasuredCurrent"), -2000, 3);
  bench.Apply([](sim::Measurements& now) { now.currentMa = 0; });
  EXPECT_NEAR(Value(Run({"status"}), "txtMeasuredCurrent"), 0, 1);

  const CliRun pack = Run({"calibrate", "pack", "--mv", std::to_string(applied.packMv)});
  ASSERT_TRUE(Succeeded(pack));
  if (gauge.packCalibrated) {
    EXPECT_NEAR(Value(pack, "txtPackMeasured"), applied.packMv, 1);
  }
}

// Where the family keeps its calibration, as the gauge itself gives it: the words that select an
// area and the command that holds it.
struct CalibrationArea {
  const char* name;
  std::int32_t base;
  std::optional<std::pair<std::uint8_t, std::uint16_t>> select;
  std::uint8_t data;
};

std::vector<CalibrationArea> CalibrationAreas(sim::Family family) {
  switch (family) {
    case sim::Family::Keld:
      return {{"block 0x58", 0, std::nullopt, 0x58}};
    case sim::Family::Quill:
      return {{"subclass 0x68", 0, std::pair{0x77, 0x68}, 0x78}};
    default:
      return {{"row 0", 0, std::pair{0x00, 0x0100}, 0x2F},
              {"row 1", 32, std::pair{0x00, 0x0101}, 0x2F}};
  }
}

std::vector<std::uint8_t> Holds(sim::Gauge& gauge, const CalibrationArea& area) {
  if (area.select) gauge.WriteWord(area.select->first, area.select->second);
  return gauge.ReadBlock(area.data).value_or(std::vector<std::uint8_t>{});
}

std::string ByteText(std::uint8_t byte) {
  char text[8];
  std::snprintf(text, sizeof text, "0x%02X", byte);
  return text;
}

// Each calibration's report tells, byte for byte, what the gauge holds afterwards that it did not
// before, and nothing else: the old byte, the one written and the one read back.
TEST_P(EndToEnd, CalibrationReportsTellEveryByteTheGaugeNowHolds) {
  bench.Apply([](sim::Measurements& applied) {
    applied.temperatures.fill(3000);
    applied.currentMa = 0;
  });
  const sim::Measurements applied = bench.gauge->AppliedMeasurements();
  const std::string file = (std::filesystem::path(::testing::TempDir()) /
                            ("ombrelay_report_" + Named(GetParam()) + ".json"))
                               .string();
  const std::vector<std::vector<std::string>> calibrations = {
      VoltageTemperatureArguments(applied, gauge),
      {"calibrate", "cc-offset"},
      {"calibrate", "pack", "--mv", std::to_string(applied.packMv)}};
  bool anyChange = false;
  for (std::vector<std::string> args : calibrations) {
    std::vector<std::vector<std::uint8_t>> before;
    for (const CalibrationArea& area : CalibrationAreas(gauge.family))
      before.push_back(Holds(*bench.gauge, area));
    args.insert(args.end(), {"--report", file});
    ASSERT_TRUE(Succeeded(Run(args))) << args[1];

    nlohmann::json expected = nlohmann::json::array();
    const std::vector<CalibrationArea> areas = CalibrationAreas(gauge.family);
    for (std::size_t a = 0; a < areas.size(); ++a) {
      const std::vector<std::uint8_t> after = Holds(*bench.gauge, areas[a]);
      for (std::size_t i = 0; i < after.size(); ++i) {
        if (i < before[a].size() && before[a][i] == after[i]) continue;
        expected.push_back({{"area", areas[a].name},
                            {"address", areas[a].base + static_cast<std::int32_t>(i)},
                            {"old", ByteText(before[a][i])},
                            {"written", ByteText(after[i])},
                            {"read_back", ByteText(after[i])}});
      }
    }
    std::ifstream in(file);
    nlohmann::json report = nlohmann::json::parse(in);
    // Each byte the calibrations change belongs to one of its parameters.
    for (nlohmann::json& change : report["dataflash_changes"]) {
      EXPECT_NE(change["parameter"], "") << args[1] << " " << change;
      change.erase("parameter");
    }
    EXPECT_EQ(report["dataflash_changes"], expected) << args[1];
    anyChange = anyChange || !expected.empty();
    EXPECT_EQ(report["done"], true);
    EXPECT_EQ(report["messages"], nlohmann::json::array());
    EXPECT_EQ(report["configuration"]["family"], gauge.familyName);
    EXPECT_FALSE(report["configuration"]["sections"].empty());
  }
  EXPECT_TRUE(anyChange) << "the calibrations changed nothing the report could tell";
}

std::vector<std::string> FileLines(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);)
    lines.push_back(line);
  return lines;
}

// The same calibration commands on a gauge behind the bus and on one in the simulator directly
// leave the same bus log, line for line: every transfer, its bytes and status, and the time it
// went out. (The security commands do not: shown on its own, the security panel first reads the
// mode on a manufacturer data command that no start-up has configured yet, 0x00, and there the
// simulator refuses a block read where a gauge on a wire answers with its word.)
using OverTheBus = EndToEnd;

TEST_P(OverTheBus, BusLogIsTheSimulatorsOwn) {
  CliBench direct{HostKind::Simulator, gauge.family};
  const auto folder = std::filesystem::path(::testing::TempDir());
  const auto logOf = [&](CliBench& each, const std::string& name) {
    // The errors the sample leaves pending after an identification request are the simulated
    // adapter's own; the kernel's interface has no such queue.
    each.gauge->SetIdentificationRequestErrors(0);
    each.Apply([](sim::Measurements& applied) { applied.temperatures.fill(3000); });
    // ctest runs the families side by side: each its own file.
    const std::string log =
        (folder / ("ombrelay_cli_" + Named(GetParam()) + "_" + name + ".jsonl")).string();
    const std::vector<std::vector<std::string>> commands = {
        {"identify"},
        VoltageTemperatureArguments(each.gauge->AppliedMeasurements(), gauge),
        {"calibrate", "cc-offset"}};
    std::vector<std::string> lines;
    for (const std::vector<std::string>& command : commands) {
      std::vector<std::string> args = {"--yes", "--bus-log", log};
      args.insert(args.end(), command.begin(), command.end());
      EXPECT_EQ(each.Run(args).exit, 0) << command[0];
      const auto part = FileLines(log);
      lines.insert(lines.end(), part.begin(), part.end());
    }
    return lines;
  };
  const std::vector<std::string> overBus = logOf(bench, "bus");
  ASSERT_GT(overBus.size(), 50U);
  EXPECT_EQ(overBus, logOf(direct, "direct"));
}

TEST_P(EndToEnd, SecurityCommandsMoveTheGaugeBetweenModes) {
  const std::string key = AuthMorlin::kDefaultKey;
  struct Step {
    std::vector<std::string> args;
    const char* mode;  // lblSealStatus afterwards
    sim::SecurityMode gaugeMode;
  };
  const std::vector<Step> steps = {
      {{"mode"}, "Unsealed", sim::SecurityMode::Unsealed},
      {{"seal"}, "Sealed", sim::SecurityMode::Sealed},
      {{"unseal", "--key", key}, "Unsealed", sim::SecurityMode::Unsealed},
      {{"full-access", "--key", key}, "Full Access", sim::SecurityMode::FullAccess},
  };
  for (const Step& step : steps) {
    const CliRun run = Run(step.args);
    EXPECT_TRUE(Succeeded(run)) << step.args[0];
    EXPECT_EQ(Text(run, "lblSealStatus"), step.mode);
    EXPECT_EQ(bench.gauge->GetSecurityMode(), step.gaugeMode) << step.args[0];
  }

  const CliRun authenticate = Run({"authenticate", "--key", key});
  EXPECT_TRUE(Succeeded(authenticate));
  EXPECT_EQ(Text(authenticate, "txtSHA1Result"), Text(authenticate, "txtPartDigest"));

  const CliRun change = Run({"change-key", "unseal", "--key", kNewKey});
  EXPECT_TRUE(Succeeded(change));
  const sim::SecurityKey expected = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77,
                                     0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF};
  EXPECT_EQ(bench.gauge->Key(sim::GaugeKey::Unseal), expected);

  // The old key no longer opens the gauge; the new one does.
  ASSERT_TRUE(Succeeded(Run({"seal"})));
  const CliRun refused = Run({"unseal", "--key", key});
  EXPECT_EQ(refused.exit, 1);
  EXPECT_EQ(Text(refused, "lblSealStatus"), "Sealed");
  EXPECT_TRUE(Succeeded(Run({"unseal", "--key", kNewKey})));
}

const Gauge kKeld{sim::Family::Keld, "KELD", 4, {"ext1", "ext2"}, false, false};
const Gauge kQuill{sim::Family::Quill, "QUILL", 3, {"ext1", "ext2"}, false, false};
const Gauge kMorlin{sim::Family::Morlin, "MORLIN", 3, {"internal", "ext1", "ext2"}, true, true};
const Gauge kKeldPlus{sim::Family::KeldPlus, "KELD_PLUS", 4, {"ext1", "ext2"}, true, true};

std::vector<Case> EveryFamilyOn(std::initializer_list<HostKind> hosts) {
  std::vector<Case> cases;
  for (const HostKind host : hosts) {
    for (const Gauge& gauge : {kKeld, kQuill, kMorlin, kKeldPlus})
      cases.push_back({host, gauge});
  }
  return cases;
}

std::string CaseName(const ::testing::TestParamInfo<Case>& each) {
  return Named(each.param);
}

INSTANTIATE_TEST_SUITE_P(
    EveryFamily, EndToEnd,
    ::testing::ValuesIn(EveryFamilyOn({HostKind::Simulator, HostKind::EmulatedBus,
                                       HostKind::EmulatedBusWithoutBlockReads})),
    CaseName);
INSTANTIATE_TEST_SUITE_P(EveryFamily, OverTheBus,
                         ::testing::ValuesIn(EveryFamilyOn(
                             {HostKind::EmulatedBus, HostKind::EmulatedBusWithoutBlockReads})),
                         CaseName);

}  // namespace
}  // namespace ombrelay
