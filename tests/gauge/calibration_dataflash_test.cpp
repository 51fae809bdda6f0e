#include "gauge/calibration_dataflash.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"

namespace ombrelay {
namespace {

using sim::Transfer;
using testing::GaugeBench;
using Lines = std::vector<std::string>;

sim::Bytes CalData(std::size_t from, std::size_t count) {
  return {g_abCalData.begin() + static_cast<std::ptrdiff_t>(from),
          g_abCalData.begin() + static_cast<std::ptrdiff_t>(from + count)};
}

constexpr const char* kKeldMismatch =
    "Read verification of first block written to Dataflash did not match. Please check "
    "communications. Calibration values incorrectly written to Dataflash.";

TEST(KeldCalibrationBlocks, ReadRetriesUpToNineTimesAndAlwaysSucceeds) {
  GaugeBench bench(sim::Family::Keld);
  EXPECT_EQ(ReadCalDataflash(), 0);
  EXPECT_EQ(CalData(0, 64), bench.gauge->DataflashBytes(0, 64));
  EXPECT_EQ(bench.Trace(), Lines{"0 ReadSMBusBlock_ 58 64"});

  // Two short answers: three reads, two waits of the read delay and 100 ms.
  g_abCalData.fill(0);
  bench.Restart();
  bench.gauge->AnswerNextBlockReadsWithLength(2, 10);
  EXPECT_EQ(ReadKELDCalBlocks(), 0);
  const auto reads = bench.OperationsNamed("ReadSMBusBlock_");
  ASSERT_EQ(reads.size(), 3U);
  for (std::size_t i = 1; i < reads.size(); ++i) {
    // 100 ms and the read delay, as closely as the clock of seconds since midnight measures it.
    EXPECT_GE(reads[i].tMs - reads[i - 1].tMs, 118);
    EXPECT_LE(reads[i].tMs - reads[i - 1].tMs, 124);
  }
  EXPECT_EQ(CalData(0, 64), bench.gauge->DataflashBytes(0, 64));

  bench.Restart();
  bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  EXPECT_EQ(ReadCalDataflash(), 0);
  EXPECT_EQ(bench.OperationsNamed("ReadSMBusBlock_").size(), 9U);
  EXPECT_TRUE(bench.MessageTexts().empty());
}

TEST(KeldCalibrationBlocks, WriteLeavesCalibrationModeAndVerifiesTheFirstHalfOnly) {
  GaugeBench bench(sim::Family::Keld);
  ReadCalDataflash();
  g_abCalData[21] = 0x51;
  g_abCalData[63] = 0x77;
  bench.Restart();
  EXPECT_EQ(WriteCalDataflash(), 0);
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 64), CalData(0, 64));
  EXPECT_EQ(bench.Trace(), (Lines{"0 WriteSMBusWord_ 00 F080", "153 WriteSMBusBlock 58 64",
                                  "285 ReadSMBusBlock_ 58 64"}));
  EXPECT_TRUE(bench.MessageTexts().empty());

  // Differences at 5 and 9 are each reported; one at 40 is not looked at. Still 0.
  bench.Restart();
  bench.gauge->StoreWrongDataflashByteOnNextWrite(5);
  bench.gauge->CorruptNextRead(Transfer::BlockRead, 9);
  EXPECT_EQ(WriteKELDCalBlocks(), 0);
  EXPECT_EQ(bench.MessageTexts(), (Lines{kKeldMismatch, kKeldMismatch}));
  bench.Restart();
  bench.gauge->StoreWrongDataflashByteOnNextWrite(40);
  EXPECT_EQ(WriteKELDCalBlocks(), 0);
  EXPECT_TRUE(bench.MessageTexts().empty());

  // A refused write: its own message, then the stale byte fails the verification.
  bench.Restart();
  g_abCalData[2] ^= 0xFF;
  bench.gauge->FailNext(Transfer::BlockWrite, 1);
  EXPECT_EQ(WriteKELDCalBlocks(), 0);
  EXPECT_EQ(bench.MessageTexts(),
            (Lines{"Not able to Write First KELD Calibration block to DataFlash. Please check "
                   "communications. Calibration values not written to Dataflash.",
                   kKeldMismatch}));
}

TEST(CalibrationSubclass, ReadsAndWritesTheSubclassWithItsOwnLength) {
  GaugeBench bench(sim::Family::Quill);
  g_abCalData.fill(0xEE);
  EXPECT_EQ(ReadCalDataflash(), 0);
  EXPECT_EQ(CalData(0, 32), bench.gauge->DataflashBytes(0, 32));
  EXPECT_EQ(g_abCalData[32], 0xEE) << "only the subclass's length arrives";
  EXPECT_EQ(bench.Trace(),
            (Lines{"0 CheckForError 0", "20 WriteSMBusWord_ 77 0068", "25 ReadSMBusBlock_ 78 32"}));

  g_abCalData[9] = 0x11;
  bench.Restart();
  EXPECT_EQ(WriteCalDataflash(), 0);
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 32), CalData(0, 32));
  EXPECT_EQ(bench.gauge->DataflashBytes(64, 1), sim::Bytes{0x02}) << "registers untouched";
  EXPECT_EQ(bench.Trace(),
            (Lines{"0 CheckForError 0", "20 WriteSMBusWord_ 77 0068", "30 ReadSMBusBlock_ 78 32",
                   "30 WriteSMBusWord_ 77 0068", "35 WriteSMBusBlock 78 32", "167 CheckForError 0",
                   "187 WriteSMBusWord_ 77 0068", "192 ReadSMBusBlock_ 78 32"}));

  bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  bench.Restart();
  EXPECT_EQ(ReadCalSubclass(g_abCalData), 1);
  EXPECT_EQ(bench.MessageTexts(),
            Lines{"Communication or length incorrect copying calibration dataflash to local "
                  "buffer."});
}

TEST(CalibrationSubclass, WriteStopsOnShortAnswersRefusalAndMismatch) {
  GaugeBench bench(sim::Family::Quill);
  ReadCalDataflash();
  const sim::Bytes stored = bench.gauge->DataflashBytes(0, 32);

  // 14 bytes: nothing is written. 15 goes on, and the gauge refuses a write of that length.
  bench.Restart();
  bench.gauge->AnswerNextBlockReadsWithLength(1, 14);
  EXPECT_EQ(WriteCalSubclass(), 1);
  EXPECT_TRUE(bench.OperationsNamed("WriteSMBusBlock").empty());
  bench.gauge->AnswerNextBlockReadsWithLength(1, 15);
  EXPECT_EQ(WriteCalSubclass(), 1);
  ASSERT_EQ(bench.OperationsNamed("WriteSMBusBlock").size(), 1U);
  EXPECT_EQ(bench.OperationsNamed("WriteSMBusBlock")[0].len, 15);
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 32), stored);

  bench.gauge->StoreWrongDataflashByteOnNextWrite(3);
  EXPECT_EQ(WriteCalSubclass(), 1);
  EXPECT_EQ(bench.MessageTexts(),
            (Lines{"Number of read from calibration subclass is fewer than expected.  Please "
                   "check communication with device.",
                   "Communication error writing local calibration buffer to Dataflash.",
                   "Verification of calibration Dataflash written and compared with readback "
                   "failed.  Please check communications and perform calibration again."}));
}

TEST(CalibrationRows, ReadTakesBothRowsWhateverTheFirstGave) {
  GaugeBench bench(sim::Family::Morlin);
  EXPECT_EQ(ReadCalDataflash(), 0);
  EXPECT_EQ(CalData(0, 64), bench.gauge->DataflashBytes(0, 64));
  EXPECT_EQ(bench.Trace(),
            (Lines{"0 CheckForError 0", "50 WriteSMBusWord_ 00 0100", "73 ReadSMBusBlock_ 2F 32",
                   "193 WriteSMBusWord_ 00 0101", "214 ReadSMBusBlock_ 2F 32"}));

  // A 31-byte first row: 1, but the second row is read all the same.
  g_abCalData.fill(0);
  bench.gauge->AnswerNextBlockReadsWithLength(1, 31);
  EXPECT_EQ(ReadCalRows(), 1);
  EXPECT_EQ(CalData(32, 32), bench.gauge->DataflashBytes(32, 32));

  // A failed second row leaves zeros and does not change the result.
  bench.After("ReadSMBusBlock_", 1, [&] { bench.gauge->FailNext(Transfer::BlockRead, 1); });
  EXPECT_EQ(ReadCalRows(), 0);
  EXPECT_EQ(CalData(0, 32), bench.gauge->DataflashBytes(0, 32));
  EXPECT_EQ(CalData(32, 32), sim::Bytes(32, 0));
  EXPECT_TRUE(bench.MessageTexts().empty());
}

TEST(CalibrationRows, WriteSendsBothRowsAndVerifiesThemInterleaved) {
  GaugeBench bench(sim::Family::KeldPlus);
  ReadCalDataflash();
  g_abCalData[0] = 0x4F;
  g_abCalData[40] = 0x01;
  bench.Restart();
  EXPECT_EQ(WriteCalDataflash(), 0);
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 64), CalData(0, 64));
  EXPECT_EQ(bench.Trace(),
            (Lines{"0 CheckForError 0", "0 WriteSMBusWord_ 00 F080", "103 WriteSMBusWord_ 00 0100",
                   "112 WriteSMBusBlock 2F 32", "312 CheckForError 0",
                   "312 WriteSMBusWord_ 00 0100", "318 ReadSMBusBlock_ 2F 32",
                   "318 WriteSMBusWord_ 00 0101", "324 WriteSMBusBlock 2F 32",
                   "524 WriteSMBusWord_ 00 0101", "530 ReadSMBusBlock_ 2F 32"}));
  EXPECT_TRUE(bench.MessageTexts().empty());

  // Byte 4 of row 1 and byte 3 of row 2 stored wrong: row 2's byte 3 is compared first.
  bench.gauge->StoreWrongDataflashByteOnNextWrite(4);
  bench.gauge->StoreWrongDataflashByteOnNextWrite(3);
  EXPECT_EQ(WriteCalRows(), 1);
  bench.gauge->StoreWrongDataflashByteOnNextWrite(3);
  EXPECT_EQ(WriteCalRows(), 1);
  EXPECT_EQ(bench.MessageTexts(), (Lines{"Second Calibration Row written failed verification.",
                                         "First Calibration Row written failed verification."}));
}

TEST(CalibrationRows, WriteFailuresOfTheSecondRow) {
  GaugeBench bench(sim::Family::Morlin);
  ReadCalDataflash();
  g_abCalData[33] ^= 0xFF;

  // The second row's request fails: nothing more is sent.
  bench.After("WriteSMBusWord_", 3, [&] { bench.gauge->FailNext(Transfer::WordWrite, 1); });
  EXPECT_EQ(WriteCalRows(), 1);
  EXPECT_EQ(bench.OperationsNamed("WriteSMBusBlock").size(), 1U);
  EXPECT_EQ(bench.MessageTexts(),
            Lines{"Communication Error when Requesting Second Calibration Dataflash Row."});

  // The second row's write fails: reported, then found again by the verification.
  bench.Restart();
  bench.After("WriteSMBusBlock", 1, [&] { bench.gauge->FailNext(Transfer::BlockWrite, 1); });
  EXPECT_EQ(WriteCalRows(), 1);
  EXPECT_NE(bench.gauge->DataflashBytes(33, 1)[0], g_abCalData[33]);
  EXPECT_EQ(bench.MessageTexts(), (Lines{"Not able to Write Second Calibration row to DataFlash.",
                                         "Second Calibration Row written failed verification."}));

  // Its read-back fails: reported, and the empty buffer fails the verification.
  bench.Restart();
  bench.After("ReadSMBusBlock_", 1, [&] { bench.gauge->FailNext(Transfer::BlockRead, 1); });
  EXPECT_EQ(WriteCalRows(), 1);
  EXPECT_EQ(bench.gauge->DataflashBytes(33, 1)[0], g_abCalData[33]) << "this time it was written";
  EXPECT_EQ(bench.MessageTexts(),
            (Lines{"Communications error reading second DF row for verification.",
                   "Second Calibration Row written failed verification."}));
}

}  // namespace
}  // namespace ombrelay
