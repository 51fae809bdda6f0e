// ombrelay dataflash backup, diff and restore end to end on one simulated gauge, as an engineer
// runs them one after the other: what they print, what they ask, and what reaches the gauge.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "cli/environment.h"
#include "cli/option_parsing.h"
#include "sim/dataflash.h"
#include "tests/cli/cli_bench.h"
#include "tests/support/test_file.h"

namespace ombrelay {
namespace {

using testing::CliBench;
using testing::CliRun;
using testing::HostKind;
using json = nlohmann::json;

sim::Bytes Dataflash(const CliBench& bench) {
  return bench.gauge->DataflashBytes(0, sim::Dataflash::kSize);
}

// The writes of a --json run, "command data" each.
std::vector<std::string> Writes(const CliRun& run) {
  std::vector<std::string> writes;
  for (const json& write : run.json.at("writes"))
    writes.push_back(std::to_string(write["command"].get<int>()) + " " +
                     write["data"].get<std::string>());
  return writes;
}

// What a run that identifies the gauge, reads its mode and stops there writes.
std::vector<std::string> IdentifiedAndModeRead() {
  const std::string zeros(124, '0');
  return {"34 " + zeros, "32 " + zeros, "34 " + zeros, "0 5400"};
}

struct Family {
  sim::Family family;
  const char* name;
  std::size_t shutdownVoltage;  // the address of Configuration.Power.Shutdown Voltage
  const char* row;              // the row it lies in
};

class DataflashCommand : public ::testing::TestWithParam<Family> {};

TEST_P(DataflashCommand, BackupChangeDiffRestoreDiff) {
  const Family& family = GetParam();
  CliBench bench(HostKind::Simulator, family.family);
  const std::string file = testing::TestFile("backup.json");
  const CliRun backup = bench.Run({"--json", "dataflash", "backup", file});
  ASSERT_EQ(backup.exit, 0) << backup.err;
  EXPECT_EQ(backup.json["values"]["file"], file);
  EXPECT_EQ(backup.json["values"]["parameters"], "54");
  EXPECT_TRUE(std::filesystem::exists(file));
  const sim::Bytes original = Dataflash(bench);

  const std::uint8_t shutdown[] = {0x1B, 0x58};
  bench.gauge->SetDataflashBytes(family.shutdownVoltage, shutdown);
  const CliRun diff = bench.Run({"--json", "dataflash", "diff", file});
  EXPECT_EQ(diff.exit, 0) << diff.err;
  EXPECT_EQ(diff.json["values"], json({{"Configuration.Power.Shutdown Voltage", "-1 -> 7000"},
                                       {"parameters_changed", "1"},
                                       {"rows", family.row}}));

  // At a terminal the restore is asked first; no is no.
  const CliRun asked = bench.RunAtTerminal({"dataflash", "restore", file}, "n\n");
  EXPECT_EQ(asked.exit, 1);
  EXPECT_EQ(asked.err, "ombrelay: about to restore the dataflash rows of " + file +
                           " that differ into the simulated " + family.name +
                           " gauge. Continue? [y/N] ombrelay: nothing done\n");
  EXPECT_NE(Dataflash(bench), original);

  const CliRun restore = bench.Run({"--json", "dataflash", "restore", file});
  EXPECT_EQ(restore.exit, 0) << restore.err;
  EXPECT_EQ(restore.json["values"],
            json({{std::string("row ") + family.row, "written and verified"},
                  {"rows_written", family.row}}));
  std::vector<std::string> rowWrites;
  for (const std::string& write : Writes(restore)) {
    if (write.starts_with("47 ")) rowWrites.push_back(write);
  }
  EXPECT_EQ(rowWrites, std::vector<std::string>{"47 " + std::string(64, 'F')});
  EXPECT_EQ(Dataflash(bench), original);

  const CliRun again = bench.Run({"dataflash", "diff", file});
  EXPECT_EQ(again.exit, 0);
  EXPECT_EQ(again.out, "Parameters changed: 0\nRows that differ: none\n");
  std::filesystem::remove(file);
}

INSTANTIATE_TEST_SUITE_P(Families, DataflashCommand,
                         ::testing::Values(Family{sim::Family::Morlin, "morlin", 354, "11"},
                                           Family{sim::Family::KeldPlus, "keld_plus", 482, "15"}),
                         [](const auto& each) { return std::string(each.param.name); });

class DataflashCommandTest : public ::testing::Test {
 protected:
  DataflashCommandTest() {
    EXPECT_EQ(bench.Run({"dataflash", "backup", file}).exit, 0);
    const std::uint8_t boardOffset[] = {0x12, 0x34};
    bench.gauge->SetDataflashBytes(24, boardOffset);
  }
  ~DataflashCommandTest() override {
    for (const char* name : {"backup.json", "flawed.json", "second.json"})
      std::filesystem::remove(testing::TestFile(name));
  }

  CliBench bench{HostKind::Simulator, sim::Family::Morlin};
  const std::string file = testing::TestFile("backup.json");
};

TEST_F(DataflashCommandTest, ARefusedRestoreWritesNothingAndSaysWhy) {
  const sim::Bytes before = Dataflash(bench);
  const CliRun sealed = bench.Run({"--json", "--sealed", "dataflash", "restore", file});
  EXPECT_EQ(sealed.exit, 1);
  EXPECT_EQ(sealed.json["outcome"], "failed");
  EXPECT_EQ(sealed.err,
            "ombrelay: the gauge is Sealed: a restore needs it Unsealed or in Full Access\n");
  EXPECT_EQ(Writes(sealed), IdentifiedAndModeRead());
  EXPECT_EQ(Dataflash(bench), before);

  CliBench other(HostKind::Simulator, sim::Family::KeldPlus);
  const sim::Bytes otherBefore = Dataflash(other);
  const CliRun refused = other.Run({"--json", "dataflash", "restore", file});
  EXPECT_EQ(refused.exit, 1);
  EXPECT_TRUE(refused.err.starts_with(
      "ombrelay: the backup is of another kind of gauge: device 4D31 in the backup, 4B60 on the "
      "gauge;"))
      << refused.err;
  std::vector<std::string> identified = IdentifiedAndModeRead();
  identified.pop_back();
  EXPECT_EQ(Writes(refused), identified) << "the mode is not even read";
  EXPECT_EQ(Dataflash(other), otherBefore);
}

TEST_F(DataflashCommandTest, AFlawedBackupIsRefusedBeforeAnyBusOrQuestion) {
  std::ifstream in(file);
  json flawed = json::parse(in);
  flawed["rows"]["0"] = "00";
  const std::string flawedFile = testing::TestFile("flawed.json");
  std::ofstream(flawedFile) << flawed.dump();
  const sim::Bytes before = Dataflash(bench);
  const std::int64_t start = bench.clock.NowMs();

  const CliRun run = bench.RunAtTerminal({"--json", "dataflash", "restore", flawedFile}, "y\n");
  EXPECT_EQ(run.exit, 1);
  EXPECT_EQ(run.err,
            "ombrelay: the backup " + flawedFile + " is refused: rows: 0 is not 32 bytes in hex\n");
  EXPECT_TRUE(run.json["writes"].empty());
  EXPECT_EQ(bench.clock.NowMs(), start) << "no bus was opened";
  EXPECT_EQ(Dataflash(bench), before);
  EXPECT_EQ(bench.Run({"dataflash", "diff", file, flawedFile}).exit, 1);
}

TEST_F(DataflashCommandTest, TwoBackupsAreComparedWithoutAGauge) {
  const std::string second = testing::TestFile("second.json");
  ASSERT_EQ(bench.Run({"dataflash", "backup", second}).exit, 0);
  const std::int64_t start = bench.clock.NowMs();
  const CliRun run = bench.Run({"dataflash", "diff", file, second});
  EXPECT_EQ(run.exit, 0) << run.err;
  EXPECT_EQ(run.out,
            "Calibration.Data.Board Offset: 3 -> 4660\n"
            "Parameters changed: 1\n"
            "Rows that differ: 0\n");
  EXPECT_EQ(bench.clock.NowMs(), start) << "no bus was opened";

  // Nor does the grammar ask for one.
  std::ostringstream out;
  std::ostringstream err;
  cli::Options options;
  EXPECT_EQ(cli::ParseOptions({"dataflash", "diff", file, second}, options, out, err), std::nullopt)
      << err.str();
  EXPECT_EQ(options.secondBackupFile, second);
  cli::Options single;
  EXPECT_EQ(cli::ParseOptions({"dataflash", "diff", file}, single, out, err), cli::kExitUsage);
}

TEST_F(DataflashCommandTest, UsageErrorsExitWithTwo) {
  const std::vector<std::vector<std::string>> usages = {
      {"dataflash"},
      {"dataflash", "backup"},
      {"dataflash", "restore"},
      {"dataflash", "restore", file, file},
      {"dataflash", "export", file},
  };
  for (const auto& args : usages) {
    const CliRun run = bench.Run(args);
    EXPECT_EQ(run.exit, 2) << ::testing::PrintToString(args) << run.err;
  }
}

}  // namespace
}  // namespace ombrelay
