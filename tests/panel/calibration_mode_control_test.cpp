// The frame round every calibration, EnterCalibrationMode and ExitCalibrationMode, on every
// family and in each of their failures; and the mapping of the internal sensor.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "tests/support/expected_trace.h"
#include "tests/support/panel_bench.h"

namespace ombrelay {
namespace {

using testing::MatchesTrace;
using testing::Name;
using testing::PanelBench;

bool RowRead(const BusOperation& operation) {
  return operation.op == "ReadSMBusBlock_" && operation.cmd == 0x2F;
}
bool RowWrite(const BusOperation& operation) {
  return operation.op == "WriteSMBusBlock" && operation.cmd == 0x2F;
}

class ModeControl : public ::testing::TestWithParam<sim::Family> {};

TEST_P(ModeControl, EnterThenExitWithoutUpdates) {
  PanelBench bench(GetParam());
  bench.StartUp();
  EXPECT_EQ(bench.panel.EnterCalibrationMode(0), 0);
  EXPECT_EQ(bench.panel.ExitCalibrationMode(), 0);
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/enter-exit-" + Name(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, ModeControl, ::testing::ValuesIn(testing::kEveryFamily),
                         testing::FamilyTestName);

TEST(EnterCalibrationMode, TheOffsetModeAsksForItsOwnRawOutput) {
  PanelBench bench(sim::Family::Morlin);
  bench.StartUp();
  sim::Measurements applied = bench.sim.gauge->AppliedMeasurements();
  applied.cellMv[0] += 200;
  bench.sim.gauge->ApplyMeasurements(applied);
  EXPECT_EQ(bench.panel.EnterCalibrationMode(1), 0);
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/enter-offset-morlin"));
  // The blocks read on the way in show in the grid.
  const MODField& cell = g_atMODBlocks[0].atFields[0];
  EXPECT_EQ(bench.panel.displaygrid.Cell(cell.iGridRow, 1).Text, cell.sValue);
}

TEST(EnterCalibrationMode, UnreadBlocksAreReportedAndTheModeEnteredAllTheSame) {
  PanelBench bench(sim::Family::Morlin);
  bench.StartUp();
  bench.sim.After(RowRead, 2, [&bench] { bench.sim.gauge->FailNext(sim::Transfer::WordWrite, 2); });
  EXPECT_EQ(bench.panel.EnterCalibrationMode(0), 0);
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/enter-blocks-unread-morlin"));
}

struct Refusal {
  const char* trace;
  sim::Family family;
  std::function<void(PanelBench&)> arrange;  // before start-up
};

class EnterRefused : public ::testing::TestWithParam<Refusal> {};

TEST_P(EnterRefused, ReportsAndLeavesTheScanStoppedAndTheControlsDisabled) {
  PanelBench bench(GetParam().family);
  GetParam().arrange(bench);
  bench.StartUp();
  EXPECT_EQ(bench.panel.EnterCalibrationMode(0), 1);
  EXPECT_TRUE(MatchesTrace(bench.Trace(), std::string("panel/") + GetParam().trace));
}

INSTANTIATE_TEST_SUITE_P(
    Each, EnterRefused,
    ::testing::Values(Refusal{"enter-refused-keld_plus", sim::Family::KeldPlus,
                              [](PanelBench& bench) {
                                bench.sim.gauge->RefuseCalibrationMode(true);
                              }},
                      Refusal{"enter-counter-stalled-morlin", sim::Family::Morlin,
                              [](PanelBench& bench) { bench.sim.gauge->StallRawCounter(true); }},
                      Refusal{"enter-raw-output-refused-keld", sim::Family::Keld,
                              [](PanelBench& bench) {
                                // Once the capture is done, the raw blocks come back short.
                                bench.sim.After(testing::OnWord(0x0001), 1, [&bench] {
                                  bench.sim.gauge->AnswerNextBlockReadsWithLength(1000, 20);
                                });
                              }}),
    [](const auto& refusal) { return testing::TestNameOf(refusal.param.trace); });

TEST(ExitCalibrationMode, UnreadBlocksAreReportedAndExitGoesOn) {
  PanelBench bench(sim::Family::Morlin);
  bench.StartUp();
  bench.sim.After(RowRead, 2, [&bench] { bench.sim.gauge->FailNext(sim::Transfer::WordWrite, 2); });
  EXPECT_EQ(bench.panel.ExitCalibrationMode(), 0);
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "panel/exit-blocks-unread-morlin"));
}

struct Mapping {
  const char* trace;
  std::function<void(PanelBench&)> arrange;
  std::string shown;  // in txtMeasTemp(0); empty for the internal sensor's temperature
};

class InternalSensorMapping : public ::testing::TestWithParam<Mapping> {};

TEST_P(InternalSensorMapping, MapsForOneReadAndPutsTheBytesBack) {
  PanelBench bench(sim::Family::Morlin);
  bench.StartUp();
  sim::Measurements applied = bench.sim.gauge->AppliedMeasurements();
  applied.temperatures[sim::Measurements::kInternal] = 3032;  // 30.0 C
  bench.sim.gauge->ApplyMeasurements(applied);
  const double reported =
      (bench.sim.gauge->ReportedMeasurements().temperatures[sim::Measurements::kInternal] - 2732) /
      10.0;
  bench.panel.txtMeasTemp[0].Text = "kept";
  GetParam().arrange(bench);

  EXPECT_EQ(bench.panel.MapMorlinportInternalTemptoSBSTemp(), 0);
  EXPECT_TRUE(MatchesTrace(bench.Trace(), std::string("panel/") + GetParam().trace));
  EXPECT_EQ(bench.panel.txtMeasTemp[0].Text,
            GetParam().shown.empty() ? FormatShortest(reported) : GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    EveryPath, InternalSensorMapping,
    ::testing::Values(Mapping{"map-internal-temperature-morlin", [](PanelBench&) {}, ""},
                      Mapping{"map-internal-temperature-unread-morlin",
                              [](PanelBench& bench) {
                                bench.sim.After(testing::OnWord(0xF080), 1, [&bench] {
                                  bench.sim.gauge->FailNext(sim::Transfer::WordWrite, 1);
                                });
                              },
                              "Err_Rd"},
                      Mapping{"map-internal-temperature-unwritten-morlin",
                              [](PanelBench& bench) {
                                bench.sim.gauge->FailNext(sim::Transfer::BlockWrite, 1);
                              },
                              "Err_Rd"},
                      Mapping{"map-internal-temperature-not-restored-morlin",
                              [](PanelBench& bench) {
                                bench.sim.After(RowWrite, 1, [&bench] {
                                  bench.sim.gauge->FailNext(sim::Transfer::BlockWrite, 1);
                                });
                              },
                              ""},
                      Mapping{"map-internal-temperature-unsupported-morlin",
                              [](PanelBench&) { g_bIntTSSupported = false; }, "kept"}),
    [](const auto& mapping) { return testing::TestNameOf(mapping.param.trace); });

}  // namespace
}  // namespace ombrelay
