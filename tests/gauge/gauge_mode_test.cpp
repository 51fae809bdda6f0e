#include "gauge/gauge_mode.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"

namespace ombrelay {
namespace {

using testing::GaugeBench;
using Lines = std::vector<std::string>;

TEST(ReadOperationStatusSecurity, MasksTheModeBitsAndReportsEachFailure) {
  GaugeBench bench(sim::Family::Morlin);
  const std::pair<sim::SecurityMode, std::int16_t> modes[] = {{sim::SecurityMode::Sealed, 3},
                                                              {sim::SecurityMode::Unsealed, 2},
                                                              {sim::SecurityMode::FullAccess, 1}};
  for (const auto& [mode, expected] : modes) {
    bench.gauge->SetSecurityMode(mode);
    bench.Restart();
    std::int16_t read = -1;
    EXPECT_EQ(ReadOperationStatusSecurity(read), 0);
    EXPECT_EQ(read, expected);
    EXPECT_EQ(bench.Trace(), (Lines{"0 WriteSMBusWord_ 00 0054", "13 ReadSMBusBlock_ 23 4"}));
  }

  std::int16_t mode = 7;
  bench.Restart();
  bench.gauge->FailNext(sim::Transfer::WordWrite, 1);
  EXPECT_EQ(ReadOperationStatusSecurity(mode), 1);
  bench.gauge->FailNext(sim::Transfer::BlockRead, 1);
  EXPECT_EQ(ReadOperationStatusSecurity(mode), 1);
  EXPECT_EQ(mode, 7);
  EXPECT_EQ(bench.OperationsNamed("ReadSMBusBlock_").size(), 1U)
      << "no read after a failed request";
  EXPECT_EQ(
      bench.MessageTexts(),
      (Lines{"Not able to send operation status to MAC. Please check communication with part.",
             "Not able to read Manufacturing Data Block requesting Operation Status."}));
}

TEST(EnableCalibrationMode, MorlinDrainsTheBusThenAsksOnceAndChecks) {
  GaugeBench bench(sim::Family::Morlin);
  bench.gauge->QueuePendingErrors(2);
  EXPECT_EQ(EnableCalibrationMode(), 0);
  EXPECT_TRUE(g_bInCalMode);
  EXPECT_TRUE(bench.gauge->InCalibrationMode());
  EXPECT_EQ(bench.Trace(), (Lines{"0 CheckForError 1", "0 CheckForError 1", "0 CheckForError 0",
                                  "0 WriteSMBusWord_ 00 0057", "8 ReadSMBusBlock_ 23 2",
                                  "8 WriteSMBusWord_ 00 002D", "61 WriteSMBusWord_ 00 0057",
                                  "114 ReadSMBusBlock_ 23 2"}));
  EXPECT_TRUE(bench.MessageTexts().empty());

  // Already in: one look and no calibration word.
  bench.Restart();
  EXPECT_EQ(EnableCalibrationMode(), 0);
  EXPECT_EQ(bench.Trace(),
            (Lines{"0 CheckForError 0", "0 WriteSMBusWord_ 00 0057", "8 ReadSMBusBlock_ 23 2"}));

  // A gauge that will not come in, or does not answer at all: 1, and the flag goes False.
  for (const bool answers : {true, false}) {
    GaugeBench refusing(sim::Family::Morlin);
    g_bInCalMode = true;
    refusing.gauge->RefuseCalibrationMode(true);
    refusing.gauge->SetDisconnected(!answers);
    EXPECT_EQ(EnableCalibrationMode(), 1);
    EXPECT_FALSE(g_bInCalMode);
    EXPECT_EQ(refusing.OperationsNamed("WriteSMBusWord_").size(), 3U);
  }
}

TEST(EnableCalibrationMode, KeldPlusReadsTheFlagWordAndTriesTwice) {
  GaugeBench bench(sim::Family::KeldPlus);
  EXPECT_EQ(EnableCalibrationMode(), 0);
  EXPECT_TRUE(g_bInCalMode);
  EXPECT_EQ(bench.Trace(),
            (Lines{"0 CheckForError 0", "0 ReadSMBusWord 74 4A13", "0 ReadSMBusWord_ 74 4A13",
                   "0 WriteSMBusWord_ 00 002D", "53 ReadSMBusWord_ 74 CA13"}));

  bench.Restart();
  EXPECT_EQ(EnableCalibrationMode(), 0);
  EXPECT_EQ(bench.OperationsNamed("WriteSMBusWord_").size(), 0U) << "already in";

  // A flag that never comes: exactly two calibration words.
  for (const bool stalled : {false, true}) {
    GaugeBench never(sim::Family::KeldPlus);
    never.gauge->RefuseCalibrationMode(!stalled);
    never.gauge->StallCalibrationFlag(stalled);
    EXPECT_EQ(EnableCalibrationMode(), 1);
    EXPECT_FALSE(g_bInCalMode);
    EXPECT_EQ(never.Trace(),
              (Lines{"0 CheckForError 0", "0 ReadSMBusWord 74 4A13", "0 ReadSMBusWord_ 74 4A13",
                     "0 WriteSMBusWord_ 00 002D", "53 ReadSMBusWord_ 74 4A13",
                     "53 WriteSMBusWord_ 00 002D", "106 ReadSMBusWord_ 74 4A13"}));
  }
}

TEST(CalibrationModeCommands, KeldAndQuillAreNeverTestedAndExitFollowsTheFlag) {
  for (const sim::Family family : {sim::Family::Keld, sim::Family::Quill}) {
    GaugeBench bench(family);
    for (const bool before : {false, true}) {
      g_bInCalMode = before;
      bench.Restart();
      EXPECT_EQ(EnableCalibrationMode(), 0);
      EXPECT_EQ(g_bInCalMode, before);
      EXPECT_EQ(bench.Trace(), Lines{"0 CheckForError 0"});
    }
  }

  GaugeBench bench(sim::Family::Morlin);
  const std::int64_t start = bench.clock.NowMs();
  EXPECT_EQ(ExitCalibrationModeCommand(), 0);
  EXPECT_TRUE(bench.Trace().empty());
  EXPECT_EQ(bench.clock.NowMs(), start) << "nothing sent, no wait";

  EnableCalibrationMode();
  bench.Restart();
  EXPECT_EQ(ExitCalibrationModeCommand(), 0);
  EXPECT_EQ(bench.Trace(), Lines{"0 WriteSMBusWord_ 00 F080"});
  EXPECT_TRUE(g_bInCalMode) << "only the next EnableCalibrationMode clears it";
  bench.gauge->FailNext(sim::Transfer::WordWrite, 1);
  const std::int64_t before = bench.clock.NowMs();
  EXPECT_NE(ExitCalibrationModeCommand(), 0);
  EXPECT_EQ(bench.clock.NowMs() - before, 53);
}

}  // namespace
}  // namespace ombrelay
