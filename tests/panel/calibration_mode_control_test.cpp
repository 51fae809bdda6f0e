#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "panel/nbcal.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

using testing::SimBench;

class ModeControl : public ::testing::Test {
 protected:
  void StartUp(sim::Family family) {
    panel.reset();
    bench.reset();  // before the next bench takes over the shared state
    bench = std::make_unique<SimBench>(family);
    panel = std::make_unique<NBCal>(bench->host, bench->platform);
    panel->UserControl_Show();
    ASSERT_TRUE(bench->MessageTexts().empty()) << bench->MessageTexts().front();
    bench->host.Clear();
  }
  std::vector<std::uint16_t> WordsWritten() const {
    std::vector<std::uint16_t> words;
    for (const BusOperation& operation : bench->OperationsNamed("WriteSMBusWord_")) {
      if (operation.cmd == 0 && operation.word) words.push_back(*operation.word);
    }
    return words;
  }
  bool Wrote(std::uint16_t word) const {
    const auto words = WordsWritten();
    return std::find(words.begin(), words.end(), word) != words.end();
  }

  std::unique_ptr<SimBench> bench;
  std::unique_ptr<NBCal> panel;
};

TEST_F(ModeControl, TheModeAsksForOneOfTheTwoRawOutputs) {
  StartUp(sim::Family::Morlin);
  EXPECT_EQ(panel->EnterCalibrationMode(0), 0);
  EXPECT_FALSE(panel->tmrScan.Enabled() || panel->btnCalibrate.Enabled);
  EXPECT_TRUE(Wrote(0xF081) && !Wrote(0xF082));
  panel->ExitCalibrationMode();
  EXPECT_TRUE(panel->tmrScan.Enabled() && panel->btnCalibrate.Enabled);
  EXPECT_FALSE(bench->gauge->InCalibrationMode()) << "the switch word behind the exit word";

  bench->host.Clear();
  panel->EnterCalibrationMode(1);
  EXPECT_TRUE(Wrote(0xF082));
}

TEST_F(ModeControl, KeldExitSendsOnlyTheExitWord) {
  StartUp(sim::Family::Keld);
  panel->ExitCalibrationMode();
  EXPECT_EQ(WordsWritten(), std::vector<std::uint16_t>{0xF080});
}

TEST_F(ModeControl, TheScanRunsOnThroughAKeldCalibrationButNotAMorlinOne) {
  for (const auto& [family, scanRead, ticksDuring] :
       {std::tuple{sim::Family::Keld, 0x3B, true}, std::tuple{sim::Family::Morlin, 0x71, false}}) {
    SCOPED_TRACE(sim::FamilyName(family));
    StartUp(family);
    panel->chkUpdates.Value = 1;
    // A scan interval shorter than the capture, which pumps events while it waits.
    panel->tmrScan.SetInterval(300);
    ASSERT_EQ(panel->EnterCalibrationMode(0), 0);
    const auto& operations = bench->host.Operations();
    const auto outputStart = std::find_if(operations.begin(), operations.end(), [](const auto& op) {
      return op.word && *op.word == 0xF081 && op.cmd == 0;
    });
    ASSERT_NE(outputStart, operations.end());
    const bool scanned = std::any_of(outputStart, operations.end(), [scanRead](const auto& op) {
      return op.cmd == scanRead || (op.cmd == 0 && op.word && *op.word == scanRead);
    });
    EXPECT_EQ(scanned, ticksDuring);
  }
}

TEST_F(ModeControl, InternalSensorMappedForOneReadAndPutBack) {
  StartUp(sim::Family::Morlin);
  const sim::Bytes before = bench->gauge->DataflashBytes(320, 2);
  sim::Measurements applied = bench->gauge->AppliedMeasurements();
  applied.temperatures[sim::Measurements::kInternal] = 3032;  // 30.0 C
  bench->gauge->ApplyMeasurements(applied);
  const double reported =
      (bench->gauge->ReportedMeasurements().temperatures[sim::Measurements::kInternal] - 2732) /
      10.0;

  EXPECT_EQ(panel->MapMorlinportInternalTemptoSBSTemp(), 0);
  EXPECT_EQ(panel->txtMeasTemp[0].Text, FormatShortest(reported));
  EXPECT_EQ(bench->gauge->DataflashBytes(320, 2), before) << "the mapping is put back";
  EXPECT_TRUE(bench->MessageTexts().empty());

  bench->host.Clear();
  g_bIntTSSupported = false;
  panel->txtMeasTemp[0].Text = "kept";
  panel->MapMorlinportInternalTemptoSBSTemp();
  EXPECT_TRUE(bench->host.Operations().empty());
  EXPECT_EQ(panel->txtMeasTemp[0].Text, "kept");
}

}  // namespace
}  // namespace ombrelay
