// Backup, comparison and restore on the simulated gauges: what a bench engineer does, and every
// refusal, with the bytes in the gauge's dataflash and on the bus as the judges.

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "dataflash/dataflash_operations.h"
#include "dataflash/restore.h"
#include "sim/dataflash.h"
#include "tests/support/expected_trace.h"
#include "tests/support/sim_bench.h"
#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using testing::OnWord;
using testing::SimBench;

constexpr std::int32_t kDataflashCommand = 0x2F;

struct Sample {
  sim::Family family;
  const char* name;
  std::vector<std::int32_t> rows;  // the rows its map's parameters lie in
  std::int32_t powerAddress;       // Configuration.Power, where Shutdown Voltage is at +2
};

const Sample kMorlin{sim::Family::Morlin, "morlin", {0, 2, 3, 4, 10, 11, 16, 17, 18}, 352};
const Sample kKeldPlus{sim::Family::KeldPlus, "keld_plus", {0, 2, 3, 4, 14, 15, 20, 21, 22}, 480};

sim::Bytes Dataflash(const SimBench& bench) {
  return bench.gauge->DataflashBytes(0, sim::Dataflash::kSize);
}

bool IsRowWrite(const BusOperation& operation) {
  return operation.op == "WriteSMBusBlock" && operation.cmd == kDataflashCommand;
}

// Operations that reach the dataflash: a row requested, or a row written.
std::vector<BusOperation> DataflashTraffic(const SimBench& bench) {
  std::vector<BusOperation> traffic;
  for (const BusOperation& operation : bench.host.Operations()) {
    const bool rowWord = operation.op == "WriteSMBusWord_" && operation.word >= 0x0100 &&
                         operation.word < 0x0100 + kDataflashRows;
    if (rowWord || IsRowWrite(operation)) traffic.push_back(operation);
  }
  return traffic;
}

// The rows written, in order.
std::vector<BusOperation> RowWrites(const SimBench& bench) {
  std::vector<BusOperation> writes;
  for (const BusOperation& operation : bench.OperationsNamed("WriteSMBusBlock")) {
    if (operation.cmd == kDataflashCommand) writes.push_back(operation);
  }
  return writes;
}

const BackupParameter& Named(const DataflashBackup& backup, const std::string& name) {
  for (const BackupParameter& parameter : backup.parameters) {
    if (ParameterName(parameter) == name) return parameter;
  }
  throw std::out_of_range(name);
}

DataflashBackup TakeBackup(SimBench& bench) {
  BackupOutcome outcome = BackupGauge(bench.host, bench.platform);
  EXPECT_TRUE(outcome.succeeded) << outcome.failure;
  return outcome.backup;
}

class BackupRestore : public ::testing::TestWithParam<Sample> {};

TEST_P(BackupRestore, AChangedParameterIsFoundAndRestoredAlone) {
  const Sample& sample = GetParam();
  SimBench bench(sample.family);
  const DataflashBackup backup = TakeBackup(bench);
  const sim::Bytes original = Dataflash(bench);

  EXPECT_EQ(backup.identity.family, sample.family == sim::Family::Morlin ? "MORLIN" : "KELD_PLUS");
  std::vector<std::int32_t> rows;
  for (const auto& [row, bytes] : backup.rows) {
    rows.push_back(row);
    EXPECT_EQ(sim::Bytes(bytes.begin(), bytes.end()),
              bench.gauge->DataflashBytes(static_cast<std::size_t>(row) * 32, 32))
        << row;
  }
  EXPECT_EQ(rows, sample.rows);
  EXPECT_EQ(Named(backup, "Configuration.Power.Shutdown Voltage").address, sample.powerAddress + 2);

  // The engineer changes one parameter: 7000 mV.
  const std::uint8_t shutdown[] = {0x1B, 0x58};
  bench.gauge->SetDataflashBytes(static_cast<std::size_t>(sample.powerAddress + 2), shutdown);
  const ComparisonOutcome changed = CompareWithGauge(bench.host, bench.platform, backup);
  ASSERT_TRUE(changed.succeeded) << changed.failure;
  ASSERT_EQ(changed.comparison.parameters.size(), 1U);
  const ParameterChange& change = changed.comparison.parameters[0];
  EXPECT_EQ(change.name, "Configuration.Power.Shutdown Voltage");
  EXPECT_EQ(change.before->value, "-1");
  EXPECT_EQ(change.after->value, "7000");
  EXPECT_EQ(changed.comparison.rows, std::vector<std::int32_t>{sample.powerAddress / 32});
  EXPECT_EQ(changed.comparison.identity, "");

  bench.Restart();
  const RestoreOutcome restored = RestoreBackup(bench.host, bench.platform, backup);
  EXPECT_TRUE(restored.succeeded) << restored.failure;
  EXPECT_EQ(restored.written, std::vector<std::int32_t>{sample.powerAddress / 32});
  const std::vector<BusOperation> writes = RowWrites(bench);
  ASSERT_EQ(writes.size(), 1U);
  EXPECT_EQ(writes[0].data, sim::Bytes(32, 0xFF)) << "the backup's row, as it was";
  EXPECT_EQ(Dataflash(bench), original);

  const ComparisonOutcome after = CompareWithGauge(bench.host, bench.platform, backup);
  ASSERT_TRUE(after.succeeded) << after.failure;
  EXPECT_TRUE(after.comparison.parameters.empty());
  EXPECT_TRUE(after.comparison.rows.empty());
  EXPECT_TRUE(bench.MessageTexts().empty());
}

TEST_P(BackupRestore, TheRestoreFollowsItsTrace) {
  const Sample& sample = GetParam();
  SimBench bench(sample.family);
  const DataflashBackup backup = TakeBackup(bench);
  const std::uint8_t boardOffset[] = {0x12, 0x34};
  bench.gauge->SetDataflashBytes(24, boardOffset);
  bench.Restart();
  EXPECT_TRUE(RestoreBackup(bench.host, bench.platform, backup).succeeded);
  EXPECT_TRUE(
      testing::MatchesTrace(bench.trace.Lines(), std::string("dataflash/restore-") + sample.name));
}

INSTANTIATE_TEST_SUITE_P(Families, BackupRestore, ::testing::Values(kMorlin, kKeldPlus),
                         [](const auto& each) { return std::string(each.param.name); });

// A restore that is refused writes nothing: the dataflash is as it was, and no row is requested.
struct Refusal {
  const char* name;
  sim::Family backupOf;
  sim::Family restoredOn;
  sim::SecurityMode mode;
  std::string failure;
  const char* trace;
};

class RefusedRestore : public ::testing::TestWithParam<Refusal> {};

TEST_P(RefusedRestore, WritesNothingAndSaysWhy) {
  const Refusal& refusal = GetParam();
  DataflashBackup backup;
  {
    SimBench source(refusal.backupOf);
    backup = TakeBackup(source);
  }
  SimBench bench(refusal.restoredOn);
  // Something to restore, were the restore let through.
  const std::uint8_t boardOffset[] = {0x12, 0x34};
  bench.gauge->SetDataflashBytes(24, boardOffset);
  bench.gauge->SetSecurityMode(refusal.mode);
  const sim::Bytes before = Dataflash(bench);
  bench.Restart();

  const RestoreOutcome outcome = RestoreBackup(bench.host, bench.platform, backup);
  EXPECT_FALSE(outcome.succeeded);
  EXPECT_EQ(outcome.failure, refusal.failure);
  EXPECT_TRUE(outcome.written.empty());
  EXPECT_EQ(Dataflash(bench), before);
  EXPECT_TRUE(DataflashTraffic(bench).empty());
  EXPECT_TRUE(testing::MatchesTrace(bench.trace.Lines(), refusal.trace));
}

const std::string kOtherGauge =
    "the backup is of another kind of gauge: device 4D31 in the backup, 4B60 on the gauge; "
    "firmware 2_05 in the backup, 1_10 on the gauge; firmware type 1 in the backup, 5 on the "
    "gauge; build 0020 in the backup, 0003 on the gauge; family MORLIN in the backup, KELD_PLUS "
    "on the gauge";

INSTANTIATE_TEST_SUITE_P(
    Checks, RefusedRestore,
    ::testing::Values(Refusal{"sealed", sim::Family::Morlin, sim::Family::Morlin,
                              sim::SecurityMode::Sealed,
                              "the gauge is Sealed: a restore needs it Unsealed or in Full Access",
                              "dataflash/restore-refused-sealed-morlin"},
                      Refusal{"other_gauge", sim::Family::Morlin, sim::Family::KeldPlus,
                              sim::SecurityMode::Unsealed, kOtherGauge,
                              "dataflash/restore-refused-other-gauge-keld_plus"},
                      // Both at once: the gauge is told apart before its mode is read.
                      Refusal{"other_gauge_and_sealed", sim::Family::Morlin, sim::Family::KeldPlus,
                              sim::SecurityMode::Sealed, kOtherGauge,
                              "dataflash/restore-refused-other-gauge-keld_plus"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(DataflashOnOtherFamilies, KeldAndQuillHaveNoAbsoluteAccess) {
  DataflashBackup backup;
  {
    SimBench source(sim::Family::Morlin);
    backup = TakeBackup(source);
  }
  for (const auto& [family, name] :
       {std::pair{sim::Family::Keld, "KELD"}, std::pair{sim::Family::Quill, "QUILL"}}) {
    SimBench bench(family);
    const sim::Bytes before = Dataflash(bench);
    const std::string failure =
        std::string(
            "absolute dataflash access exists on MORLIN and KELD_PLUS gauges only; this "
            "gauge is ") +
        name;
    EXPECT_EQ(BackupGauge(bench.host, bench.platform).failure, failure);
    EXPECT_EQ(CompareWithGauge(bench.host, bench.platform, backup).failure, failure);
    EXPECT_EQ(RestoreBackup(bench.host, bench.platform, backup).failure, failure);
    EXPECT_EQ(Dataflash(bench), before);
    EXPECT_TRUE(DataflashTraffic(bench).empty());
  }
}

TEST(DataflashReads, ASealedOrSilentGaugeIsToldApart) {
  SimBench sealed(sim::Family::KeldPlus);
  sealed.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  EXPECT_EQ(BackupGauge(sealed.host, sealed.platform).failure,
            "the gauge is Sealed: a backup needs it Unsealed or in Full Access");
  EXPECT_TRUE(DataflashTraffic(sealed).empty());

  SimBench silent(sim::Family::Morlin);
  silent.gauge->SetIdentificationBlock({1, 2, 3});
  EXPECT_EQ(BackupGauge(silent.host, silent.platform).failure,
            "the gauge did not identify itself, so its dataflash map is not known");

  // A row that comes short is named, and nothing more is read.
  SimBench shortRow(sim::Family::Morlin);
  shortRow.After(OnWord(0x0103), 1, [&] { shortRow.gauge->AnswerNextBlockReadsWithLength(1, 31); });
  EXPECT_EQ(BackupGauge(shortRow.host, shortRow.platform).failure,
            "row 3 of the gauge's dataflash came with 31 bytes instead of 32");
  EXPECT_EQ(DataflashTraffic(shortRow).back().word, 0x0103);
}

TEST(DataflashReads, AGaugeWithoutItsConfigurationOrMapIsToldApart) {
  const std::string device = "(device 4D31, firmware 2_05)";
  testing::TempAppDir withoutMap;
  withoutMap.Remove("maps/morlin-4D31-2_05.json");
  SimBench mapless(sim::Family::Morlin, withoutMap.Path().string());
  EXPECT_EQ(BackupGauge(mapless.host, mapless.platform).failure,
            "the dataflash map of the gauge " + device + " does not load: not a file");

  testing::TempAppDir withoutConfiguration;
  withoutConfiguration.Remove("config.ini");
  SimBench unconfigured(sim::Family::Morlin, withoutConfiguration.Path().string());
  EXPECT_EQ(BackupGauge(unconfigured.host, unconfigured.platform).failure,
            "no configuration applies to the gauge " + device);
  EXPECT_TRUE(DataflashTraffic(unconfigured).empty());
}

TEST(RestoreFailures, AReadBackThatDiffersStopsTheRestore) {
  SimBench bench(sim::Family::Morlin);
  const DataflashBackup backup = TakeBackup(bench);
  // Three rows to restore: 0, 10 and 16.
  const std::uint8_t changed[] = {0x12, 0x34};
  for (const std::size_t address : {24U, 322U, 514U})
    bench.gauge->SetDataflashBytes(address, changed);
  const sim::Bytes row16 = bench.gauge->DataflashBytes(512, 32);
  // The second row's write stores byte 5 inverted.
  bench.After(IsRowWrite, 1, [&] { bench.gauge->StoreWrongDataflashByteOnNextWrite(5); });

  const RestoreOutcome outcome = RestoreBackup(bench.host, bench.platform, backup);
  EXPECT_FALSE(outcome.succeeded);
  EXPECT_EQ(outcome.failure,
            "the restore stopped: row 10 read back otherwise than written: byte 5 holds 0x00 "
            "where 0xFF was written; rows written and verified before it: 0");
  EXPECT_EQ(outcome.differing, (std::vector<std::int32_t>{0, 10, 16}));
  EXPECT_EQ(outcome.written, std::vector<std::int32_t>{0});
  EXPECT_EQ(outcome.failedRow, 10);
  EXPECT_EQ(RowOutcomeText(outcome, 0), "written and verified");
  EXPECT_EQ(RowOutcomeText(outcome, 10), "failed");
  EXPECT_EQ(RowOutcomeText(outcome, 16), "not written");
  EXPECT_EQ(bench.gauge->DataflashBytes(24, 2),
            sim::Bytes(backup.rows.at(0).begin() + 24, backup.rows.at(0).begin() + 26));
  EXPECT_EQ(bench.gauge->DataflashBytes(512, 32), row16) << "row 16 was not touched";
  const std::vector<BusOperation> rowWrites = RowWrites(bench);
  ASSERT_EQ(rowWrites.size(), 2U);
  EXPECT_EQ(rowWrites[0].data, sim::Bytes(backup.rows.at(0).begin(), backup.rows.at(0).end()));
  EXPECT_EQ(rowWrites[1].data, sim::Bytes(backup.rows.at(10).begin(), backup.rows.at(10).end()));
}

TEST(RestoreFailures, ARowThatCannotBeReadFirstStopsItBeforeAnyWrite) {
  SimBench bench(sim::Family::Morlin);
  const DataflashBackup backup = TakeBackup(bench);
  const std::uint8_t changed[] = {0x12, 0x34};
  bench.gauge->SetDataflashBytes(24, changed);
  const sim::Bytes before = Dataflash(bench);
  bench.After(OnWord(0x0110), 1, [&] { bench.gauge->FailNext(sim::Transfer::BlockRead, 1); });
  EXPECT_EQ(RestoreBackup(bench.host, bench.platform, backup).failure,
            "row 16 of the gauge's dataflash could not be read, so nothing was written");
  EXPECT_EQ(Dataflash(bench), before);
  EXPECT_TRUE(RowWrites(bench).empty());
}

}  // namespace
}  // namespace ombrelay
