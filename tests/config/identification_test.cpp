#include "config/identification.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

using testing::SimBench;

std::vector<std::int64_t> CleanCheckTimes(const SimBench& bench) {
  std::vector<std::int64_t> times;
  for (const auto& operation : bench.OperationsNamed("CheckForError")) {
    if (operation.status == 0) times.push_back(operation.tMs);
  }
  return times;
}

TEST(ReadDeviceIdentification, WritesThreeBlocksThenSettlesThenReadsTheBlock) {
  SimBench bench(sim::Family::Morlin);
  const auto start = bench.clock.NowMs();
  EXPECT_EQ(ReadDeviceIdentification(23), "4D31_2_05_1_0020");

  const auto& operations = bench.host.Operations();
  ASSERT_GE(operations.size(), 4U);
  const std::vector<std::int32_t> writeCommands = {0x22, 0x20, 0x22};
  for (std::size_t i = 0; i < writeCommands.size(); ++i) {
    EXPECT_EQ(operations[i].op, "WriteSMBusBlock");
    EXPECT_EQ(operations[i].cmd, writeCommands[i]);
    EXPECT_EQ(operations[i].len, 62);
    EXPECT_EQ(operations[i].data, std::vector<std::uint8_t>(62, 0));
  }
  EXPECT_EQ(operations.back().op, "ReadSMBusBlock_");
  EXPECT_EQ(operations.back().cmd, 0x2F);
  EXPECT_EQ(operations.back().len, 11);

  // The gauge's pending errors are drained in the first pass; then four quiet passes 100 ms apart.
  const auto clean = CleanCheckTimes(bench);
  ASSERT_EQ(clean.size(), 4U);
  for (std::size_t i = 1; i < clean.size(); ++i)
    EXPECT_EQ(clean[i] - clean[i - 1], 100);
  EXPECT_FALSE(bench.OperationsNamed("CheckForError").front().status == 0);
  EXPECT_EQ(clean.front() - start, 100);
  EXPECT_EQ(operations.back().tMs, clean.back());
  EXPECT_EQ(bench.clock.NowMs() - clean.back(), 500);

  EXPECT_EQ(g_sDeviceNumber, "4D31");
  EXPECT_EQ(g_sFirmwareVersion, "2_05");
  EXPECT_EQ(g_sFirmwareType, "1");
  EXPECT_EQ(g_sBuildNumber, "0020");
}

TEST(ReadDeviceIdentification, AnErrorDuringSettlingStartsTheCountAgain) {
  SimBench bench(sim::Family::Keld);
  int cleanChecks = 0;
  bench.host.onOperation = [&](const BusOperation& operation) {
    if (operation.op == "CheckForError" && operation.status == 0 && ++cleanChecks == 3) {
      bench.gauge->QueuePendingErrors(2);
    }
  };
  EXPECT_EQ(ReadDeviceIdentification(23), "B12_1_07_2_0012");

  // Errors in the fourth pass start the count again from that pass: seven passes in all.
  const auto clean = CleanCheckTimes(bench);
  ASSERT_EQ(clean.size(), 7U);
  for (std::size_t i = 1; i < clean.size(); ++i)
    EXPECT_EQ(clean[i] - clean[i - 1], 100);
}

TEST(ReadDeviceIdentification, EachSampleFormGivesItsStrings) {
  const std::vector<std::pair<sim::Family, std::string>> samples = {
      {sim::Family::Keld, "B12_1_07_2_0012"},
      {sim::Family::Quill, "5120_3_01_4_0101"},
      {sim::Family::Morlin, "4D31_2_05_1_0020"},
      {sim::Family::KeldPlus, "4B60_1_10_5_0003"}};
  for (const auto& [family, expected] : samples) {
    SimBench bench(family);
    EXPECT_EQ(ReadDeviceIdentification(23), expected);
  }
}

// Notes the length each block read is asked for, before the host answers.
class AskedLengths : public RecordingHost {
 public:
  using RecordingHost::RecordingHost;
  Status ReadSMBusBlock_(std::int32_t command, std::span<std::uint8_t> data, std::int16_t& length,
                         std::int16_t address) override {
    asked.push_back(length);
    return RecordingHost::ReadSMBusBlock_(command, data, length, address);
  }
  std::vector<std::int16_t> asked;
};

TEST(ReadDeviceIdentification, AsksForElevenBytes) {
  SimBench bench(sim::Family::KeldPlus);  // whose block is 13 bytes long
  AskedLengths host(bench.bus, [] { return 0; });
  g_oHost = &host;
  EXPECT_EQ(ReadDeviceIdentification(23), "4B60_1_10_5_0003");
  EXPECT_EQ(host.asked, std::vector<std::int16_t>{11});
}

TEST(ReadDeviceIdentification, ABlockThatMakesNoSenseLeavesTheStringsAlone) {
  SimBench bench(sim::Family::Morlin);
  g_sDeviceNumber = "OLD";
  const std::vector<std::vector<std::uint8_t>> blocks = {
      {0x4B, 0x60, 1, 0x10, 0, 3, 0, 0, 0, 0, 2, 0, 5},  // 13 bytes without the form mark
      std::vector<std::uint8_t>(12, 1),
      {}};
  for (const auto& block : blocks) {
    bench.gauge->SetIdentificationBlock(block);
    const auto before = bench.clock.NowMs();
    EXPECT_EQ(ReadDeviceIdentification(23), "");
    EXPECT_EQ(g_sDeviceNumber, "OLD");
    EXPECT_LT(bench.clock.NowMs() - before, 900);  // no wait behind a failed read
  }

  bench.gauge->FailNext(sim::Transfer::BlockRead, 1);
  EXPECT_EQ(ReadDeviceIdentification(23), "");
  EXPECT_EQ(g_sDeviceNumber, "OLD");
}

TEST(CheckDeviceResponds, JudgesTheStateOfCharge) {
  SimBench bench(sim::Family::Morlin);
  bench.gauge->SetWord(0x0D, 100);
  EXPECT_EQ(CheckDeviceResponds(), 0);
  bench.gauge->SetWord(0x0D, 101);
  EXPECT_NE(CheckDeviceResponds(), 0);
  bench.gauge->SetWord(0x0D, 0xFFFF);  // -1 taken as signed
  EXPECT_EQ(CheckDeviceResponds(), 0);

  const auto reads = bench.OperationsNamed("ReadSMBusWord_");
  ASSERT_GE(reads.size(), 2U);
  EXPECT_EQ(reads[0].cmd, 0x00);  // ManufacturerAccess, still 0 before the configuration
  EXPECT_EQ(reads[1].cmd, 0x0D);
}

}  // namespace
}  // namespace ombrelay
