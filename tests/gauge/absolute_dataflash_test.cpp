#include "gauge/absolute_dataflash.h"

#include <gtest/gtest.h>

#include "tests/support/gauge_bench.h"

namespace ombrelay {
namespace {

using sim::Transfer;
using testing::GaugeBench;

sim::Bytes Pattern(std::size_t length, std::uint8_t start) {
  sim::Bytes bytes(length);
  for (std::size_t i = 0; i < length; ++i)
    bytes[i] = static_cast<std::uint8_t>(start + i);
  return bytes;
}

TEST(ReadDFAbsolute, OneRowOrTwoAcrossTheBoundary) {
  GaugeBench bench(sim::Family::Morlin);
  bench.gauge->SetDataflashBytes(0, Pattern(64, 0x40));
  std::uint8_t first = 0;
  std::uint8_t second = 0;
  EXPECT_EQ(ReadDFAbsolute(0x1E, first, second), 0);
  EXPECT_EQ(first, 0x5E);
  EXPECT_EQ(second, 0x5F);
  EXPECT_EQ(ReadDFAbsolute(0x1F, first, second), 0);
  EXPECT_EQ(first, 0x5F);
  EXPECT_EQ(second, 0x60);
  EXPECT_TRUE(bench.Follows("gauge/read-df-absolute"));
}

TEST(ReadDFAbsolute, FailuresLeaveTheOutputsUnset) {
  GaugeBench bench(sim::Family::KeldPlus);
  std::uint8_t first = 7;
  std::uint8_t second = 7;
  // The second row's request fails.
  bench.After("WriteSMBusWord_", 2, [&] { bench.gauge->FailNext(Transfer::WordWrite, 1); });
  EXPECT_EQ(ReadDFAbsolute(0x3F, first, second), 1);
  // A short row: reported, yet the host said 0.
  bench.gauge->AnswerNextBlockReadsWithLength(2, 31);
  EXPECT_EQ(ReadDFAbsolute(0x20, first, second), 0);
  // A refused row: the host's status.
  bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  EXPECT_NE(ReadDFAbsolute(0x20, first, second), 0);
  EXPECT_EQ(first, 7);
  EXPECT_EQ(second, 7);
  EXPECT_TRUE(bench.Follows("gauge/read-df-absolute-failures"));

  bench.Restart();
  EXPECT_EQ(ReadDFAbsolute(-1, first, second), 1);
  EXPECT_TRUE(bench.trace.Lines().empty());
}

TEST(WriteDFAbsolute, PatchesTwoBytesAndKeepsTheRestOfTheRows) {
  GaugeBench bench(sim::Family::Morlin);
  bench.gauge->SetDataflashBytes(0, Pattern(64, 0x40));
  EXPECT_EQ(WriteDFAbsolute(0x1F, 0xA1, 0xB2), 0);
  sim::Bytes expected = Pattern(64, 0x40);
  expected[31] = 0xA1;
  expected[32] = 0xB2;
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 64), expected);

  EXPECT_EQ(WriteDFAbsolute(0x1E, 0x01, 0x02), 0);
  EXPECT_EQ(bench.gauge->DataflashBytes(30, 3), (sim::Bytes{0x01, 0x02, 0xB2}));
  EXPECT_TRUE(bench.Follows("gauge/write-df-absolute"));
}

TEST(WriteDFAbsolute, FailuresStopOrGoOnAsEachPhaseDemands) {
  GaugeBench bench(sim::Family::Morlin);
  bench.gauge->AnswerNextBlockReadsWithLength(1, 31);
  EXPECT_EQ(WriteDFAbsolute(0x40, 1, 2), 0);

  bench.After("ReadSMBusBlock_", 1,
              [&] { bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed); });
  EXPECT_NE(WriteDFAbsolute(0x40, 3, 4), 0);
  EXPECT_EQ(bench.gauge->DataflashBytes(0x40, 2), (sim::Bytes{1, 2}));

  bench.gauge->SetSecurityMode(sim::SecurityMode::Unsealed);
  bench.After("WriteSMBusWord_", 1, [&] { bench.gauge->FailNext(Transfer::WordWrite, 1); });
  EXPECT_EQ(WriteDFAbsolute(0x40, 5, 6), 1);
  bench.gauge->FailNext(Transfer::WordWrite, 1);
  EXPECT_EQ(WriteDFAbsolute(0x40, 5, 6), 1);
  EXPECT_EQ(bench.gauge->DataflashBytes(0x40, 2), (sim::Bytes{1, 2}));
  bench.After("WriteSMBusBlock", 1, [&] { bench.gauge->AnswerNextBlockReadsWithLength(1, 31); });
  EXPECT_EQ(WriteDFAbsolute(0x40, 7, 8), 0);
  EXPECT_TRUE(bench.Follows("gauge/write-df-absolute-failures"));

  bench.Restart();
  EXPECT_EQ(WriteDFAbsolute(-5, 0, 0), 1);
  EXPECT_TRUE(bench.trace.Lines().empty());
}

}  // namespace
}  // namespace ombrelay
