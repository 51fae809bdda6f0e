#include "calibration/raw_capture.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "calibration/calibration_tables.h"
#include "gauge/manufacturer_blocks.h"
#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"

namespace ombrelay {
namespace {

using testing::GaugeBench;
using Lines = std::vector<std::string>;

constexpr std::uint8_t kManuData = 0x23;

// A raw block: counter, status, then the twelve words low byte first.
sim::Bytes RawBlock(std::uint8_t counter, std::uint8_t status = 1,
                    const std::array<std::uint16_t, 12>& words = {}) {
  sim::Bytes block{counter, status};
  for (const std::uint16_t word : words) {
    block.push_back(static_cast<std::uint8_t>(word & 0xFF));
    block.push_back(static_cast<std::uint8_t>(word >> 8));
  }
  return block;
}

// A gauge in raw output, answering the manufacturer data command with blocks in turn and
// repeating the last one when they run out.
class RawStreamBench : public GaugeBench {
 public:
  explicit RawStreamBench(sim::Family family = sim::Family::Morlin) : GaugeBench(family) {
    CalInit();
    g_iOutputCalValuesCommand = static_cast<std::int16_t>(0xF081);
    g_iOutputCalValuesforOffsetCommand = static_cast<std::int16_t>(0xF082);
    g_iRawCalDataBlockSize = 26;
    g_iNumSamples = 2;
  }

  void Stream(std::deque<sim::Bytes> blocks) {
    blocks_ = std::move(blocks);
    gauge->Commands().OnReadBlock(kManuData, [this]() -> std::optional<sim::Bytes> {
      const sim::Bytes block = blocks_.front();
      if (blocks_.size() > 1) blocks_.pop_front();
      return block;
    });
  }

  std::size_t Reads() const { return OperationsNamed("ReadSMBusBlock_").size(); }
  static std::string RawValue(std::size_t slot) { return g_atMODBlocks[2].atFields[slot].sValue; }

 private:
  std::deque<sim::Bytes> blocks_;
};

std::deque<sim::Bytes> Counters(std::initializer_list<std::uint8_t> counters) {
  std::deque<sim::Bytes> blocks;
  for (const std::uint8_t counter : counters)
    blocks.push_back(RawBlock(counter));
  return blocks;
}

std::deque<sim::Bytes> Repeated(std::uint8_t counter, int times, std::deque<sim::Bytes> then) {
  for (int i = 0; i < times; ++i)
    then.push_front(RawBlock(counter));
  return then;
}

TEST(GatherRawCalValues, CountsOnlyNewCountersAndGivesUpAfterElevenRepeats) {
  struct Case {
    const char* what;
    std::deque<sim::Bytes> blocks;
    Status result;
    std::size_t reads;
  };
  const Case cases[] = {
      {"a first counter of 0 is a repeat", Counters({0, 1, 2}), 0, 3},
      {"ten repeats, then a change each time", Repeated(0, 10, Repeated(1, 10, Counters({1, 2}))),
       0, 22},
      {"a counter that stands still", Counters({0}), 1, 11},
      {"a sample, then eleven repeats", Repeated(0, 1, Counters({7})), 1, 13},
  };
  for (const Case& c : cases) {
    RawStreamBench bench;
    g_atMODBlocks[2].atFields[3].sValue = "kept";
    bench.Stream(c.blocks);
    EXPECT_EQ(GatherRawCalValues(0), c.result) << c.what;
    EXPECT_EQ(bench.Reads(), c.reads) << c.what;
    if (c.result == 0) {
      EXPECT_TRUE(bench.MessageTexts().empty()) << c.what;
    } else {
      EXPECT_EQ(bench.MessageTexts(), Lines{"Unable to enter calibration mode."}) << c.what;
      EXPECT_EQ(RawStreamBench::RawValue(3), "kept") << c.what;
    }
  }
}

TEST(GatherRawCalValues, AveragesSignedAndUnsignedWordsHalfToEvenIntoEveryNamedSlot) {
  RawStreamBench bench;
  // Words: coulomb counter, cells 1 to 4, TInt, TS1, TS2, TS3, TS4, pack, battery.
  bench.Stream({RawBlock(0, 1, {999, 999, 999, 999, 999, 999, 999, 999, 999, 999, 999, 999}),
                RawBlock(1, 1, {0xFFFD, 0xFFFF, 1, 2, 12800, 3, 0xFFFF, 0, 0, 7, 40000, 3}),
                RawBlock(2, 1, {0xFFFC, 1, 2, 3, 12801, 4, 1, 0, 0, 8, 40001, 4})});
  EXPECT_EQ(GatherRawCalValues(0), 0);
  const Lines expected = {"2", "1", "-4", "32768", "2", "2", "12800", "4", "0", "8", "40000", "4"};
  for (std::size_t slot = 0; slot < expected.size(); ++slot) {
    EXPECT_EQ(RawStreamBench::RawValue(slot), expected[slot])
        << g_atMODBlocks[2].atFields[slot].sName;
  }

  // The output word, the host's own wait, then a pumping wait before the first read.
  const Lines trace = bench.Trace();
  ASSERT_GE(trace.size(), 3U);
  EXPECT_EQ(trace[0], "0 WriteSMBusWord_ 00 F081");
  EXPECT_EQ(trace[1], "3 Delay 250");
  const auto firstRead =
      bench.OperationsNamed("ReadSMBusBlock_").front().tMs - bench.host.Operations()[0].tMs;
  EXPECT_GE(firstRead, 503);
  EXPECT_LE(firstRead, 506);

  bench.Restart();
  bench.Stream(Counters({3, 4}));
  GatherRawCalValues(1);
  EXPECT_EQ(bench.Trace().front(), "0 WriteSMBusWord_ 00 F082");
}

TEST(GatherRawCalValues, WrongLengthLeavesAndRestartsOutputThenNamesTheLength) {
  RawStreamBench bench;
  sim::Bytes shortBlock = RawBlock(1);
  shortBlock.resize(20);
  bench.Stream({RawBlock(1), shortBlock});
  EXPECT_EQ(GatherRawCalValues(0), 1);
  EXPECT_EQ(bench.MessageTexts(), Lines{"Received Wrong Number Of Bytes in Raw Cal Block : 20"});
  const auto& operations = bench.host.Operations();
  ASSERT_EQ(operations.size(), 6U);
  EXPECT_EQ(operations[3].len, 20);
  EXPECT_EQ(operations[4].word, 0xF080);
  EXPECT_EQ(operations[5].word, 0xF081);
  EXPECT_EQ(operations[5].tMs - operations[4].tMs, 103);
  EXPECT_EQ(bench.clock.NowMs() - operations[5].tMs, 6) << "3 ms behind the word, 3 more";
  EXPECT_EQ(RawStreamBench::RawValue(0), "0") << "block 2 keeps its old values";

  bench.Restart();
  EXPECT_EQ(UpdateRawCalValues(), 1);
  EXPECT_EQ(bench.MessageTexts(), Lines{"Unable to read raw cal values and update display."});
  bench.Stream({RawBlock(9, 1, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 4100})});
  EXPECT_EQ(UpdateRawCalValues(), 0);
  EXPECT_EQ(RawStreamBench::RawValue(11), "4100");
}

TEST(RawOutputRequests, RetryUntilTheGaugeStreamsWithTheRightStatus) {
  RawStreamBench bench;
  // A counter standing at 0 never counts as progress: all eleven tries are used.
  bench.Stream(Counters({0}));
  EXPECT_EQ(RequestRawCalOutput(), 1);
  EXPECT_EQ(bench.Reads(), 2U + 11U);

  bench.Restart();
  bench.Stream(Counters({5, 6, 7, 8, 9}));
  EXPECT_EQ(RequestRawCalOutput(), 0);
  EXPECT_EQ(bench.Reads(), 2U + 3U);

  bench.Restart();
  bench.Stream({RawBlock(1, 2)});
  EXPECT_EQ(RequestOffsetCalOutput(), 0);
  EXPECT_EQ(bench.Reads(), 1U);
  bench.Restart();
  bench.Stream({RawBlock(1, 1)});
  EXPECT_EQ(RequestOffsetCalOutput(), 1);
  EXPECT_EQ(bench.Reads(), 1U + 6U);
  EXPECT_TRUE(bench.MessageTexts().empty());
}

TEST(WaitForRawCalSequence, WaitsForRawOutputThenAFreshCounterPumpingBetweenReads) {
  // KELD: entering calibration mode reads nothing, so every read below is the stream's.
  RawStreamBench bench(sim::Family::Keld);
  bench.Stream({RawBlock(4, 0), RawBlock(4, 0), RawBlock(4, 1), RawBlock(4, 1), RawBlock(5, 1)});
  MODBuffer buffer{};
  EXPECT_EQ(WaitForRawCalSequence(buffer), 0);
  EXPECT_EQ(buffer[0], 5);
  EXPECT_EQ(bench.OperationsNamed("CheckForError").size(), 2U);
  const auto reads = bench.OperationsNamed("ReadSMBusBlock_");
  ASSERT_EQ(reads.size(), 5U);
  EXPECT_EQ(bench.OperationsNamed("WriteSMBusWord_").at(0).word, 0xF081);
  // Each read in the waits is 50 ms and one pass of the event loop after the one before.
  for (std::size_t i = 2; i < reads.size(); ++i)
    EXPECT_EQ(reads[i].tMs - reads[i - 1].tMs, 51);

  // A gauge that never streams: sixteen more reads in each wait, and the caller judges what came.
  bench.Restart();
  bench.Stream({RawBlock(4, 0)});
  EXPECT_EQ(WaitForRawCalSequence(buffer), 0);
  EXPECT_EQ(bench.Reads(), 1U + 16U + 16U);
  EXPECT_EQ(buffer[1], 0);
}

}  // namespace
}  // namespace ombrelay
