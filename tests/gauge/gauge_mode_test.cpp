#include "gauge/gauge_mode.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"

namespace ombrelay {
namespace {

using testing::GaugeBench;

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
    EXPECT_TRUE(bench.Follows("gauge/read-operation-status"));
  }

  std::int16_t mode = 7;
  bench.Restart();
  bench.gauge->FailNext(sim::Transfer::WordWrite, 1);
  bench.gauge->FailNext(sim::Transfer::BlockRead, 1);
  EXPECT_EQ(ReadOperationStatusSecurity(mode), 1);
  EXPECT_EQ(ReadOperationStatusSecurity(mode), 1);
  EXPECT_EQ(mode, 7);
  EXPECT_TRUE(bench.Follows("gauge/read-operation-status-failures"));
}

TEST(EnableCalibrationMode, MorlinLooksOnceAndSwitchesOnlyWhenOut) {
  GaugeBench bench(sim::Family::Morlin);
  bench.gauge->QueuePendingErrors(2);
  EXPECT_EQ(EnableCalibrationMode(), 0);
  EXPECT_TRUE(g_bInCalMode);
  EXPECT_TRUE(bench.gauge->InCalibrationMode());
  EXPECT_TRUE(bench.Follows("gauge/enable-calibration-mode-morlin"));

  bench.Restart();
  EXPECT_EQ(EnableCalibrationMode(), 0);
  EXPECT_TRUE(bench.gauge->InCalibrationMode()) << "the switch word was not sent again";
  EXPECT_TRUE(bench.Follows("gauge/enable-calibration-mode-morlin-already"));

  // A gauge that will not come in, or does not answer at all: 1, and the flag goes False.
  for (const bool answers : {true, false}) {
    GaugeBench refusing(sim::Family::Morlin);
    g_bInCalMode = true;
    refusing.gauge->RefuseCalibrationMode(true);
    refusing.gauge->SetDisconnected(!answers);
    EXPECT_EQ(EnableCalibrationMode(), 1);
    EXPECT_FALSE(g_bInCalMode);
    EXPECT_TRUE(refusing.Follows(answers ? "gauge/enable-calibration-mode-morlin-refused"
                                         : "gauge/enable-calibration-mode-morlin-silent"));
  }
}

TEST(EnableCalibrationMode, KeldPlusReadsTheFlagWordAndTriesTwice) {
  GaugeBench bench(sim::Family::KeldPlus);
  EXPECT_EQ(EnableCalibrationMode(), 0);
  EXPECT_TRUE(g_bInCalMode);
  EXPECT_TRUE(bench.Follows("gauge/enable-calibration-mode-keld_plus"));

  bench.Restart();
  EXPECT_EQ(EnableCalibrationMode(), 0);
  EXPECT_TRUE(bench.Follows("gauge/enable-calibration-mode-keld_plus-already"));

  // Refused, or switched on while the reported flag stands still: two attempts either way.
  for (const bool stalled : {false, true}) {
    GaugeBench never(sim::Family::KeldPlus);
    never.gauge->RefuseCalibrationMode(!stalled);
    never.gauge->StallCalibrationFlag(stalled);
    EXPECT_EQ(EnableCalibrationMode(), 1);
    EXPECT_FALSE(g_bInCalMode);
    EXPECT_TRUE(never.Follows("gauge/enable-calibration-mode-keld_plus-refused"));
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
      EXPECT_TRUE(bench.Follows(family == sim::Family::Keld
                                    ? "gauge/enable-calibration-mode-keld"
                                    : "gauge/enable-calibration-mode-quill"));
    }
  }

  GaugeBench bench(sim::Family::Morlin);
  EXPECT_EQ(ExitCalibrationModeCommand(), 0);
  EXPECT_TRUE(bench.trace.Lines().empty()) << "nothing sent, no wait";

  EnableCalibrationMode();
  bench.Restart();
  EXPECT_EQ(ExitCalibrationModeCommand(), 0);
  EXPECT_TRUE(g_bInCalMode) << "only the next EnableCalibrationMode clears it";
  bench.gauge->FailNext(sim::Transfer::WordWrite, 1);
  EXPECT_NE(ExitCalibrationModeCommand(), 0);
  EXPECT_TRUE(bench.Follows("gauge/exit-calibration-mode"));
}

}  // namespace
}  // namespace ombrelay
