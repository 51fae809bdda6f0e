#include "shell/utils.h"

#include <gtest/gtest.h>

#include "shell/controls.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

TEST(Utils, SplitAndJoinAreBitPatternsAndRoundTrip) {
  std::int16_t high = 0;
  std::int16_t low = 0;
  SplitLongtoWords(0x00018000, high, low);
  EXPECT_EQ(high, 1);
  EXPECT_EQ(low, -32768);
  std::uint8_t bHigh = 0;
  std::uint8_t bLow = 0;
  SplitWordtoBytes(-32768, bHigh, bLow);
  EXPECT_EQ(bHigh, 128);
  EXPECT_EQ(bLow, 0);
  std::int16_t word = 0;
  JoinBytestoWord(128, 0, word);
  EXPECT_EQ(word, -32768);
  JoinBytestoWord(0x12, 0x34, word);
  EXPECT_EQ(word, 0x1234);

  for (std::int32_t v : {0, 1, -1, -2, 0x7FFFFFFF, INT32_MIN, 0x12345678, -0x12345678}) {
    std::int32_t value = 0;
    SplitLongtoWords(v, high, low);
    JoinWordstoLong(high, low, value);
    EXPECT_EQ(value, v);
    SplitWordtoBytes(low, bHigh, bLow);
    JoinBytestoWord(bHigh, bLow, word);
    EXPECT_EQ(word, low);
  }
}

TEST(Utils, BitsWidenWithTheSignHexDigitsAndPadding) {
  EXPECT_TRUE(IsBitSet(std::int16_t{-32768}, 15));
  EXPECT_TRUE(IsBitSet(std::int16_t{-32768}, 16));
  EXPECT_FALSE(IsBitSet(std::int32_t{0x00008000}, 16));
  EXPECT_TRUE(IsBitSet(std::int32_t{0x00008000}, 15));
  for (std::int32_t negative : {-1, INT32_MIN, -32768, -2})
    EXPECT_TRUE(IsBitSet(negative, 31));
  EXPECT_FALSE(IsBitSet(std::int32_t{0x7FFFFFFF}, 31));
  EXPECT_TRUE(IsBitSet(std::int32_t{1}, -5));  // a bit below 0 counts as 0
  EXPECT_FALSE(IsBitSet(std::int32_t{2}, 0));

  for (const char* yes : {"0", "9", "A", "F", "a", "f", "Fx"})
    EXPECT_TRUE(IsHexDigit(yes)) << yes;
  for (const char* no : {":", "@", "G", "g", " ", "/"})
    EXPECT_FALSE(IsHexDigit(no)) << no;
  EXPECT_EQ(PadLeftZeros("F", 2), "0F");
  EXPECT_EQ(PadLeftZeros("ABC", 2), "ABC");
  EXPECT_EQ(PadLeftZeros("", 3), "000");
  EXPECT_EQ(PadLeftZeros("7", -1), "7");
}

TEST(Delay, WaitsAtLeastTheTimeAndLetsTimersTickAndZeroPumpsOnce) {
  testing::SimBench bench(std::nullopt);
  int ticks = 0;
  Timer timer;
  timer.Tick = [&] { ++ticks; };
  timer.SetInterval(100);
  bench.platform.AttachTimer(timer);
  timer.SetEnabled(true);
  auto before = bench.clock.NowMs();
  DelayMilliseconds(1000);
  EXPECT_GE(bench.clock.NowMs() - before, 1000);
  EXPECT_LE(bench.clock.NowMs() - before, 1010);
  EXPECT_EQ(ticks, 10);

  ticks = 0;
  timer.SetInterval(1);
  before = bench.clock.NowMs();
  DelaySeconds(0.0F);
  DelaySeconds(-3.0F);
  EXPECT_EQ(bench.clock.NowMs() - before, 2);
  EXPECT_EQ(ticks, 2);
  bench.platform.DetachTimer(timer);
}

TEST(DelayAtMidnight, EndsEarlyWhenTheClockWraps) {
  ResetSharedState();
  sim::VirtualClock clock(sim::Clock::kMillisecondsPerDay - 500);
  VirtualPlatform platform(clock);
  g_oPlatform = &platform;
  const auto before = clock.NowMs();
  DelaySeconds(5.0F);
  EXPECT_LT(clock.NowMs() - before, 600);
  ResetSharedState();
}

}  // namespace
}  // namespace ombrelay
