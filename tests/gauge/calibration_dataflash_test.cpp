#include "gauge/calibration_dataflash.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"

namespace ombrelay {
namespace {

using sim::Transfer;
using testing::GaugeBench;

sim::Bytes CalData(std::size_t from, std::size_t count) {
  return {g_abCalData.begin() + static_cast<std::ptrdiff_t>(from),
          g_abCalData.begin() + static_cast<std::ptrdiff_t>(from + count)};
}

TEST(KeldCalibrationBlocks, ReadRetriesUpToNineTimesAndAlwaysSucceeds) {
  GaugeBench bench(sim::Family::Keld);
  EXPECT_EQ(ReadCalDataflash(), 0);
  EXPECT_EQ(CalData(0, 64), bench.gauge->DataflashBytes(0, 64));
  EXPECT_TRUE(bench.Follows("gauge/read-cal-dataflash-keld"));

  g_abCalData.fill(0);
  bench.Restart();
  bench.gauge->AnswerNextBlockReadsWithLength(2, 10);
  EXPECT_EQ(ReadKELDCalBlocks(), 0);
  EXPECT_EQ(CalData(0, 64), bench.gauge->DataflashBytes(0, 64));
  EXPECT_TRUE(bench.Follows("gauge/read-keld-cal-blocks-short"));

  bench.Restart();
  bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  EXPECT_EQ(ReadCalDataflash(), 0);
  EXPECT_TRUE(bench.Follows("gauge/read-keld-cal-blocks-silent"));
}

TEST(KeldCalibrationBlocks, WriteLeavesCalibrationModeAndVerifiesTheFirstHalfOnly) {
  GaugeBench bench(sim::Family::Keld);
  ReadCalDataflash();
  g_abCalData[21] = 0x51;
  g_abCalData[63] = 0x77;
  bench.Restart();
  EXPECT_EQ(WriteCalDataflash(), 0);
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 64), CalData(0, 64));
  EXPECT_TRUE(bench.Follows("gauge/write-cal-dataflash-keld"));

  bench.Restart();
  // Bytes 0 to 31 are verified, each difference on its own; byte 32 onward is not looked at.
  bench.gauge->StoreWrongDataflashByteOnNextWrite(5);
  bench.gauge->CorruptNextRead(Transfer::BlockRead, 31);
  EXPECT_EQ(WriteKELDCalBlocks(), 0);
  bench.gauge->StoreWrongDataflashByteOnNextWrite(32);
  EXPECT_EQ(WriteKELDCalBlocks(), 0);
  g_abCalData[2] ^= 0xFF;
  bench.gauge->FailNext(Transfer::BlockWrite, 1);
  EXPECT_EQ(WriteKELDCalBlocks(), 0);
  EXPECT_TRUE(bench.Follows("gauge/write-keld-cal-blocks-failures"));
}

TEST(CalibrationSubclass, ReadsAndWritesTheSubclassWithItsOwnLength) {
  GaugeBench bench(sim::Family::Quill);
  g_abCalData.fill(0xEE);
  EXPECT_EQ(ReadCalDataflash(), 0);
  EXPECT_EQ(CalData(0, 32), bench.gauge->DataflashBytes(0, 32));
  EXPECT_EQ(g_abCalData[32], 0xEE) << "only the subclass's length arrives";
  bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  EXPECT_EQ(ReadCalSubclass(g_abCalData), 1);
  EXPECT_TRUE(bench.Follows("gauge/read-cal-dataflash-quill"));

  bench.gauge->SetSecurityMode(sim::SecurityMode::Unsealed);
  g_abCalData[9] = 0x11;
  bench.Restart();
  EXPECT_EQ(WriteCalDataflash(), 0);
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 32), CalData(0, 32));
  EXPECT_EQ(bench.gauge->DataflashBytes(64, 1), sim::Bytes{0x02}) << "registers untouched";
  EXPECT_TRUE(bench.Follows("gauge/write-cal-dataflash-quill"));
}

TEST(CalibrationSubclass, WriteStopsAtTheFirstOfItsChecks) {
  GaugeBench bench(sim::Family::Quill);
  ReadCalDataflash();
  const sim::Bytes stored = bench.gauge->DataflashBytes(0, 32);
  bench.Restart();

  bench.gauge->AnswerNextBlockReadsWithLength(1, 14);
  bench.gauge->FailNext(Transfer::BlockWrite, 1);
  EXPECT_EQ(WriteCalSubclass(), 1);
  bench.gauge->AnswerNextBlockReadsWithLength(1, 15);
  EXPECT_EQ(WriteCalSubclass(), 1);
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 32), stored);

  bench.gauge->StoreWrongDataflashByteOnNextWrite(3);
  EXPECT_EQ(WriteCalSubclass(), 1);
  bench.gauge->FailNext(Transfer::BlockWrite, 1);
  EXPECT_EQ(WriteCalSubclass(), 1);
  bench.After("WriteSMBusBlock", 1, [&] { bench.gauge->FailNext(Transfer::BlockRead, 1); });
  EXPECT_EQ(WriteCalSubclass(), 1);
  EXPECT_TRUE(bench.Follows("gauge/write-cal-subclass-failures"));
}

TEST(CalibrationRows, ReadTakesBothRowsWhateverTheFirstGave) {
  GaugeBench bench(sim::Family::Morlin);
  EXPECT_EQ(ReadCalDataflash(), 0);
  EXPECT_EQ(CalData(0, 64), bench.gauge->DataflashBytes(0, 64));
  EXPECT_TRUE(bench.Follows("gauge/read-cal-dataflash-morlin"));

  g_abCalData.fill(0);
  bench.Restart();
  bench.gauge->AnswerNextBlockReadsWithLength(1, 31);
  EXPECT_EQ(ReadCalRows(), 1);
  EXPECT_EQ(CalData(32, 32), bench.gauge->DataflashBytes(32, 32));

  bench.After("ReadSMBusBlock_", 1, [&] { bench.gauge->FailNext(Transfer::BlockRead, 1); });
  EXPECT_EQ(ReadCalRows(), 0);
  EXPECT_EQ(CalData(0, 32), bench.gauge->DataflashBytes(0, 32));
  EXPECT_EQ(CalData(32, 32), sim::Bytes(32, 0));
  EXPECT_TRUE(bench.Follows("gauge/read-cal-rows-failures"));
}

TEST(CalibrationRows, WriteSendsBothRowsAndVerifiesThemInterleaved) {
  GaugeBench bench(sim::Family::KeldPlus);
  ReadCalDataflash();
  g_abCalData[0] = 0x4F;
  g_abCalData[40] = 0x01;
  bench.Restart();
  EXPECT_EQ(WriteCalDataflash(), 0);
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 64), CalData(0, 64));
  EXPECT_TRUE(bench.Follows("gauge/write-cal-dataflash-keld_plus"));

  bench.Restart();
  bench.gauge->StoreWrongDataflashByteOnNextWrite(4);
  bench.gauge->StoreWrongDataflashByteOnNextWrite(3);
  EXPECT_EQ(WriteCalRows(), 1);
  bench.gauge->StoreWrongDataflashByteOnNextWrite(3);
  bench.gauge->StoreWrongDataflashByteOnNextWrite(3);
  EXPECT_EQ(WriteCalRows(), 1);
  EXPECT_TRUE(bench.Follows("gauge/write-cal-rows-mismatch"));
}

TEST(CalibrationRows, WriteFailuresOfTheSecondRow) {
  GaugeBench bench(sim::Family::Morlin);
  ReadCalDataflash();
  g_abCalData[33] ^= 0xFF;
  bench.Restart();

  bench.gauge->StoreWrongDataflashByteOnNextWrite(4);
  bench.After("WriteSMBusWord_", 3, [&] { bench.gauge->FailNext(Transfer::WordWrite, 1); });
  EXPECT_EQ(WriteCalRows(), 1);

  bench.After("ReadSMBusBlock_", 1, [&] { bench.gauge->FailNext(Transfer::BlockWrite, 1); });
  EXPECT_EQ(WriteCalRows(), 1);
  EXPECT_NE(bench.gauge->DataflashBytes(33, 1)[0], g_abCalData[33]);

  bench.After("ReadSMBusBlock_", 1, [&] {
    bench.gauge->FailNext(Transfer::BlockWrite, 1);
    bench.gauge->FailNext(Transfer::BlockRead, 1);
  });
  EXPECT_EQ(WriteCalRows(), 1);
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 32), CalData(0, 32));
  EXPECT_TRUE(bench.Follows("gauge/write-cal-rows-failures"));
}

}  // namespace
}  // namespace ombrelay
