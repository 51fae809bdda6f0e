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
    const char* trace;
    std::deque<sim::Bytes> blocks;
    Status result;
  };
  const Case cases[] = {
      {"first-counter-zero", Counters({0, 1, 2}), 0},
      {"ten-repeats", Repeated(0, 10, Repeated(1, 10, Counters({1, 2}))), 0},
      {"stalled", Counters({0}), 1},
      {"sample-then-stalled", Repeated(0, 1, Counters({7})), 1},
  };
  for (const Case& c : cases) {
    RawStreamBench bench;
    g_atMODBlocks[2].atFields[3].sValue = "kept";
    bench.Stream(c.blocks);
    EXPECT_EQ(GatherRawCalValues(0), c.result) << c.trace;
    EXPECT_TRUE(bench.Follows(std::string("calibration/gather-raw-cal-values-") + c.trace));
    if (c.result != 0) {
      EXPECT_EQ(RawStreamBench::RawValue(3), "kept") << c.trace;
    }
  }
}

TEST(GatherRawCalValues, AveragesSignedAndUnsignedWordsHalfToEvenIntoEveryNamedSlot) {
  RawStreamBench bench;
  // Words: coulomb counter, cells 1 to 4, TInt, TS1, TS2, TS3, TS4, pack, battery.
  bench.Stream({RawBlock(0, 1, {999, 999, 999, 999, 999, 999, 999, 999, 999, 999, 999, 999}),
                RawBlock(1, 1, {0xFFFD, 0xFFFF, 1, 2, 12800, 3, 0xFFFF, 0, 0, 7, 40000, 0xFFFF}),
                RawBlock(2, 1, {0xFFFC, 1, 2, 3, 12801, 4, 1, 0, 0, 8, 40001, 1})});
  EXPECT_EQ(GatherRawCalValues(0), 0);
  const Lines expected = {"2",     "1", "-4", "32768", "2",     "2",
                          "12800", "4", "0",  "8",     "40000", "32768"};
  for (std::size_t slot = 0; slot < expected.size(); ++slot) {
    EXPECT_EQ(RawStreamBench::RawValue(slot), expected[slot])
        << g_atMODBlocks[2].atFields[slot].sName;
  }
  EXPECT_TRUE(bench.Follows("calibration/gather-raw-cal-values-first-counter-zero"));

  bench.Restart();
  bench.Stream(Counters({3, 4}));
  EXPECT_EQ(GatherRawCalValues(1), 0);
  EXPECT_TRUE(bench.Follows("calibration/gather-raw-cal-values-offset"));
}

TEST(GatherRawCalValues, WithoutAnAcceptedSampleCountAsksNothingOfTheGauge) {
  RawStreamBench bench;
  bench.Stream({RawBlock(1), RawBlock(2)});
  g_iNumSamples = 0;  // as when the settings refused the only section's count
  EXPECT_EQ(GatherRawCalValues(0), 1);
  EXPECT_TRUE(bench.trace.Lines().empty());
}

TEST(GatherRawCalValues, WrongLengthLeavesAndRestartsOutputThenNamesTheLength) {
  RawStreamBench bench;
  sim::Bytes shortBlock = RawBlock(1);
  shortBlock.resize(20);
  bench.Stream({RawBlock(1), shortBlock});
  EXPECT_EQ(GatherRawCalValues(0), 1);
  EXPECT_EQ(RawStreamBench::RawValue(0), "0") << "block 2 keeps its old values";
  // Short on the eleventh repeat in a row: the length is judged before the counter.
  shortBlock[0] = 0;
  bench.Stream(Repeated(0, 10, {shortBlock}));
  EXPECT_EQ(GatherRawCalValues(0), 1);

  bench.gauge->Commands().OnReadBlock(kManuData, [] { return std::nullopt; });
  EXPECT_EQ(UpdateRawCalValues(), 1);
  bench.Stream({RawBlock(9, 1, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 4100})});
  EXPECT_EQ(UpdateRawCalValues(), 0);
  EXPECT_EQ(RawStreamBench::RawValue(11), "4100");
  EXPECT_TRUE(bench.Follows("calibration/gather-raw-cal-values-wrong-length"));
}

TEST(RawOutputRequests, RetryUntilTheGaugeStreamsWithTheRightStatus) {
  RawStreamBench bench;
  bench.Stream(Counters({0}));
  EXPECT_EQ(RequestRawCalOutput(), 1);
  bench.Stream(Counters({5, 6, 7, 8, 9}));
  EXPECT_EQ(RequestRawCalOutput(), 0);
  bench.Stream({RawBlock(1, 2)});
  EXPECT_EQ(RequestOffsetCalOutput(), 0);
  bench.Stream({RawBlock(1, 1)});
  EXPECT_EQ(RequestOffsetCalOutput(), 1);
  EXPECT_TRUE(bench.Follows("calibration/raw-output-requests"));
}

TEST(WaitForRawCalSequence, WaitsForRawOutputThenAFreshCounterPumpingBetweenReads) {
  for (const sim::Family family : {sim::Family::Keld, sim::Family::KeldPlus, sim::Family::Morlin}) {
    const std::string name(sim::FamilyName(family));
    RawStreamBench bench(family);
    std::deque<sim::Bytes> blocks = {RawBlock(4, 0), RawBlock(4, 0), RawBlock(4, 1), RawBlock(4, 1),
                                     RawBlock(5, 1)};
    // MORLIN reads its calibration flag, bit 7 of byte 1, on the same command.
    if (family == sim::Family::Morlin) blocks.insert(blocks.begin(), 2, RawBlock(9, 0x80));
    bench.Stream(blocks);
    MODBuffer buffer{};
    EXPECT_EQ(WaitForRawCalSequence(buffer), 0) << name;
    EXPECT_EQ(buffer[0], 5) << name;

    // A gauge that never streams: the caller judges what came.
    if (family == sim::Family::Keld) {
      bench.Stream({RawBlock(4, 0)});
      EXPECT_EQ(WaitForRawCalSequence(buffer), 0);
      EXPECT_EQ(buffer[1], 0);
    }
    EXPECT_TRUE(bench.Follows("calibration/wait-for-raw-cal-sequence-" + name));
  }
}

}  // namespace
}  // namespace ombrelay
