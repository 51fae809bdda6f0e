#include "config/identification.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

using testing::GaugeBench;
using testing::SimBench;
using Lines = std::vector<std::string>;

TEST(ReadDeviceIdentification, WritesThreeBlocksThenSettlesThenReadsTheBlock) {
  GaugeBench bench(sim::Family::Morlin);
  EXPECT_EQ(ReadDeviceIdentification(23), "4D31_2_05_1_0020");
  // The gauge's pending error is drained in the first pass; then four quiet passes 100 ms apart.
  EXPECT_EQ(bench.Trace(),
            (Lines{"0 WriteSMBusBlock 22 62", "0 WriteSMBusBlock 20 62", "0 WriteSMBusBlock 22 62",
                   "100 CheckForError 1", "100 CheckForError 0", "200 CheckForError 0",
                   "300 CheckForError 0", "400 CheckForError 0", "400 ReadSMBusBlock_ 2F 11"}));
  for (const auto& write : bench.OperationsNamed("WriteSMBusBlock"))
    EXPECT_EQ(write.data, std::vector<std::uint8_t>(62, 0));
  EXPECT_EQ(bench.clock.NowMs() - bench.host.Operations().back().tMs, 500);
  EXPECT_EQ(g_sDeviceNumber, "4D31");
  EXPECT_EQ(g_sFirmwareVersion, "2_05");
  EXPECT_EQ(g_sFirmwareType, "1");
  EXPECT_EQ(g_sBuildNumber, "0020");
}

TEST(ReadDeviceIdentification, AnErrorDuringSettlingStartsTheCountAgain) {
  GaugeBench bench(sim::Family::Keld);
  int cleanChecks = 0;
  bench.afterOperation = [&](const BusOperation& operation) {
    if (operation.op == "CheckForError" && operation.status == 0 && ++cleanChecks == 3)
      bench.gauge->QueuePendingErrors(2);
  };
  EXPECT_EQ(ReadDeviceIdentification(23), "B12_1_07_2_0012");
  const Lines trace = bench.Trace();
  EXPECT_EQ(Lines(trace.begin() + 3, trace.end()),
            (Lines{"100 CheckForError 1", "100 CheckForError 1", "100 CheckForError 0",
                   "200 CheckForError 0", "300 CheckForError 0", "400 CheckForError 1",
                   "400 CheckForError 1", "400 CheckForError 0", "500 CheckForError 0",
                   "600 CheckForError 0", "700 CheckForError 0", "700 ReadSMBusBlock_ 2F 11"}));
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

TEST(ReadDeviceIdentification, ABlockThatMakesNoSenseOrFailsLeavesTheStringsAlone) {
  SimBench bench(sim::Family::Morlin);
  g_sDeviceNumber = "OLD";
  bench.gauge->SetIdentificationBlock({0x4B, 0x60, 1, 0x10, 0, 3, 0, 0, 0, 0, 2, 0, 5});
  const auto before = bench.clock.NowMs();
  EXPECT_EQ(ReadDeviceIdentification(23), "");
  EXPECT_LT(bench.clock.NowMs() - before, 900);  // no wait behind a failed read

  bench.gauge->SetIdentificationBlock({0x4D, 0x31, 0x02, 0x05, 0x00, 0x20, 1, 0, 0, 0, 0});
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
