// The calculations of current and pack voltage on started sample panels: the worked examples,
// every limit at its edge and one beyond, the messages, and their whole traces.

#include "calibration/current_pack_calibration.h"

#include <gtest/gtest.h>

#include <functional>

#include "calibration/calibration_targets.h"
#include "gauge/value_conversion.h"
#include "shell/shared_state.h"
#include "tests/support/expected_trace.h"
#include "tests/support/panel_bench.h"

namespace ombrelay {
namespace {

using sim::Family;
using testing::MatchesTrace;
using testing::PanelBench;
using testing::Shown;

constexpr std::uint16_t kRawOutput = 0xF081;
constexpr std::uint16_t kOffsetOutput = 0xF082;
// Where MORLIN's row 0 keeps the values, in dataflash.
constexpr std::size_t kPackGain = 8;
constexpr std::size_t kCurrentGain = 12;
constexpr std::size_t kCurrentOffset = 20;
constexpr std::size_t kBoardOffset = 24;

// A started panel with its scan stopped, the gauge streaming raw output of the given word (none:
// not streaming), and the trace started afresh.
struct Calculation : PanelBench {
  explicit Calculation(Family family, std::optional<std::uint16_t> output = std::nullopt,
                       std::int16_t shorted = -112, std::int16_t normal = -103)
      : PanelBench(family) {
    sim::ConverterErrors errors = sim.gauge->GetConverterErrors();
    errors.coulombCounterOffset = shorted;
    errors.boardOffset = static_cast<std::int16_t>(normal - shorted);
    sim.gauge->SetConverterErrors(errors);
    sim::Measurements applied = sim.gauge->AppliedMeasurements();
    applied.currentMa = 0;
    sim.gauge->ApplyMeasurements(applied);
    StartUp();
    panel.tmrScan.SetEnabled(false);
    if (output) sim.gauge->WriteWord(sim::Gauge::kManufacturerAccessCommand, *output);
    sim.Restart();
  }
  std::uint16_t Stored(std::size_t address) const {
    const sim::Bytes bytes = sim.gauge->DataflashBytes(address, 2);
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
  }
};

TEST(CalibrateCCOffset, TakesShortedReadingsFromMinus450ToMinus5) {
  for (const std::int16_t count : {-5, -450, -4, -451, 0}) {
    SCOPED_TRACE(count);
    Calculation bench(Family::Morlin, kOffsetOutput, count);
    const bool taken = count <= -5 && count >= -450;
    EXPECT_EQ(CalibrateCCOffset(), taken ? 0 : 1);
    const std::vector<Shown> refusal = {
        {"Current is flowing in sense resistor.  Please ensure no "
         "current is flowing. Coulomb Counter Offset Calibration "
         "will abort.",
         MessageStyle::Plain}};
    EXPECT_EQ(testing::Boxes(bench.sim.platform), taken ? std::vector<Shown>{} : refusal);
    EXPECT_EQ(bench.Stored(kCurrentOffset), static_cast<std::uint16_t>(taken ? 64 * count : -7190));
  }
}

TEST(CalibrateCCOffset, RefusesANormalInputBlockBeforeLookingAtItsCount) {
  // Status byte 1 and a count of zero at once: the status speaks.
  Calculation bench(Family::Morlin, kRawOutput, -112, 0);
  EXPECT_EQ(CalibrateCCOffset(), 1);
  EXPECT_EQ(testing::Boxes(bench.sim.platform),
            (std::vector<Shown>{{"Error reading Raw CC Shorted Calibration Data. Please check "
                                 "connection with gas gauge. Calibration not completed.",
                                 MessageStyle::Plain}}));
  EXPECT_EQ(bench.Stored(kCurrentOffset), static_cast<std::uint16_t>(-7190));
}

TEST(CalibrateBoardOffset, StoresWhatTheNormalInputShowsBeyondTheCounterOffset) {
  for (const std::int16_t count : {300, -300, 301, -301}) {
    SCOPED_TRACE(count);
    Calculation bench(Family::Morlin, kRawOutput, -112, count);
    const bool taken = count <= 300 && count >= -300;
    EXPECT_EQ(CalibrateBoardOffset(), taken ? 0 : 1);
    EXPECT_EQ(bench.sim.MessageTexts().size(), taken ? 0U : 1U);
    if (!taken) {
      EXPECT_EQ(testing::Boxes(bench.sim.platform),
                (std::vector<Shown>{{"A large amount of current is flowing. This calibration is "
                                     "for board offset only. Board Offset Calibration will abort.",
                                     MessageStyle::Plain}}));
    }
    EXPECT_EQ(bench.Stored(kBoardOffset),
              static_cast<std::uint16_t>(taken ? 64 * count + 7190 : 3));
  }
  // O = -7000 and CC = -110 store -40.
  Calculation example(Family::Morlin, kRawOutput, -112, -110);
  const_cast<MODField&>(CalTarget(kCCOffsetFields)).sValue = "-7000";
  EXPECT_EQ(CalibrateBoardOffset(), 0);
  EXPECT_EQ(example.sim.gauge->DataflashBytes(kBoardOffset, 2), (sim::Bytes{0xFF, 0xD8}));

  // Shorted output where the normal is wanted, whatever its count: no write, but the exit word.
  Calculation shorted(Family::Morlin, kOffsetOutput, -112, 400);
  EXPECT_EQ(CalibrateBoardOffset(), 1);
  EXPECT_EQ(
      shorted.sim.MessageTexts(),
      std::vector<std::string>{"Device is not in raw cal mode before calibrating board offset."});
  EXPECT_EQ(shorted.Stored(kBoardOffset), 3);
}

TEST(CalibrateBoardOffset, LeavesCalibrationModeAfterAFailedWriteAndRefusesAShortBlock) {
  Calculation sealed(Family::Morlin, kRawOutput);
  sealed.sim.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  EXPECT_EQ(CalibrateBoardOffset(), 1);
  EXPECT_EQ(sealed.sim.MessageTexts().back(),
            "Error writing Board Offset Calibration values to Dataflash. Please ensure part is not "
            "sealed.");
  EXPECT_EQ(sealed.sim.host.Operations().back().word, 0xF080) << "the exit word comes last";

  Calculation shortBlock(Family::Morlin, kRawOutput);
  shortBlock.sim.gauge->AnswerNextBlockReadsWithLength(1, 25);
  EXPECT_EQ(CalibrateBoardOffset(), 1);
  EXPECT_EQ(
      shortBlock.sim.MessageTexts(),
      std::vector<std::string>{"Device is not in raw cal mode before calibrating board offset."});
}

TEST(CalibratePackVoltage, GainFromARawReadingAbove50UpTo65535) {
  constexpr const char* kLow =
      "Pack Gain raw calibration value is low.  Pack Calibration not performed. Please try again.";
  constexpr const char* kRange =
      "Pack voltage correction is beyond allowed range.  Calibration not completed.";
  struct Case {
    const char* raw;
    double actual;
    std::uint16_t stored;
    const char* message;
  };
  const std::vector<Case> cases = {{"19000", 12000, 0xA1AF, nullptr},
                                   {"51", 40, 51401, nullptr},
                                   {"50", 40, 20480, kLow},
                                   {"16384", 16383.75, 65535, nullptr},
                                   {"16384", 16384, 20480, kRange}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.raw);
    Calculation bench(Family::Morlin);
    g_atMODBlocks[2].atFields[10].sValue = c.raw;
    EXPECT_EQ(CalibratePackVoltage(c.actual), c.message ? 1 : 0);
    EXPECT_EQ(bench.sim.MessageTexts(),
              c.message ? std::vector<std::string>{c.message} : std::vector<std::string>{});
    EXPECT_EQ(bench.Stored(kPackGain), c.stored);
  }
  // KELD and QUILL have no formula: the write goes through with the gain as the gauge holds it.
  for (const Family family : {Family::Keld, Family::Quill}) {
    Calculation bench(family);
    const sim::Bytes before = bench.sim.gauge->DataflashBytes(0, 1024);
    g_atMODBlocks[2].atFields[10].sValue = "19000";
    EXPECT_EQ(CalibratePackVoltage(12000), 0);
    EXPECT_EQ(bench.sim.gauge->DataflashBytes(0, 1024), before);
    EXPECT_FALSE(bench.sim.OperationsNamed("WriteSMBusBlock").empty());
  }
}

TEST(CalibrateSenseResistor, ScalesTheGainByKnownOverMeasured) {
  // "-2000" over -2100 with a gain of 1.0.
  Calculation bench(Family::Morlin);
  bench.sim.gauge->SetWord(0x0A, static_cast<std::uint16_t>(-2100));
  const_cast<MODField&>(CalTarget(kCurrentGainFields)).sValue = "1.0";
  EXPECT_EQ(CalibrateSenseResistor("-2000"), 0);
  const sim::Bytes gains = bench.sim.gauge->DataflashBytes(kCurrentGain, 8);
  EXPECT_NEAR(GaugeFloattoDouble(gains[0], gains[1], gains[2], gains[3]), 0.952381, 1e-6);
  EXPECT_NEAR(GaugeFloattoDouble(gains[4], gains[5], gains[6], gains[7]), 284058.7, 0.05);

  // No current: refused, nothing written; a single mA passes.
  for (const std::int16_t measured : {0, 1}) {
    Calculation low(Family::Morlin);
    low.sim.gauge->SetWord(0x0A, static_cast<std::uint16_t>(measured));
    EXPECT_EQ(CalibrateSenseResistor("-2000"), measured == 0 ? 1 : 0);
    EXPECT_EQ(low.sim.MessageTexts(),
              measured == 0 ? std::vector<std::string>{"Please source or sink current. Measured "
                                                       "current is low."}
                            : std::vector<std::string>{});
  }
  // A gain the gauge's float cannot hold is told, and nothing is written.
  Calculation huge(Family::Morlin);
  huge.sim.gauge->SetWord(0x0A, 1);
  const_cast<MODField&>(CalTarget(kCurrentGainFields)).sValue = "1E+300";
  EXPECT_EQ(CalibrateSenseResistor("-2000"), 1);
  ASSERT_EQ(huge.sim.MessageTexts().size(), 1U);
  EXPECT_NE(huge.sim.MessageTexts()[0].find("cannot be stored"), std::string::npos);
  EXPECT_TRUE(huge.sim.OperationsNamed("WriteSMBusBlock").empty());
  // The Current word unread.
  Calculation silent(Family::Morlin);
  silent.sim.gauge->FailNext(sim::Transfer::WordRead, 1);
  EXPECT_EQ(CalibrateSenseResistor("-2000"), 1);
  EXPECT_EQ(testing::Boxes(silent.sim.platform),
            (std::vector<Shown>{{"Unable to read current attempting current calibration. Current "
                                 "calibration was not performed.",
                                 MessageStyle::Plain}}));
}

// The failures the other tests leave aside, each ending in its own box.
TEST(CurrentAndPackCalculations, EndEachFailureWithItsOwnBox) {
  struct Failure {
    const char* message;
    Family family;
    std::optional<std::uint16_t> output;
    std::function<void(Calculation&)> arrange;
    std::function<Status()> calculate;
  };
  // The gauge keeps one byte of the write wrong, so that the read-back differs.
  const auto spoilt = [](Calculation& bench) {
    bench.sim.gauge->StoreWrongDataflashByteOnNextWrite(3);
  };
  const auto pack = [] { return CalibratePackVoltage(12000); };
  const std::vector<Failure> failures = {
      {"Attempt to enter Raw Coulomb Counter Offset Cal failed. Calibration not performed.",
       Family::Keld, std::nullopt,
       [](Calculation& bench) { bench.sim.gauge->FailNext(sim::Transfer::BlockRead, 100); },
       CalibrateCCOffset},
      {"Error reading calibration Dataflash.  Please check communications. Calibration not "
       "completed.",
       Family::Morlin, kOffsetOutput,
       [](Calculation& bench) {
         bench.sim.After(testing::OnWord(0xF080), 1,
                         [&bench] { bench.sim.gauge->FailNext(sim::Transfer::BlockRead, 5); });
       },
       CalibrateCCOffset},
      {"Error writing Coulomb Counter Offset Calibration values to Dataflash. Please ensure "
       "device is not sealed.",
       Family::Morlin, kOffsetOutput, spoilt, CalibrateCCOffset},
      {"Error writing Board Offset Calibration values to Dataflash. Please ensure part is not "
       "sealed.",
       Family::Morlin, kRawOutput, spoilt, CalibrateBoardOffset},
      {"Not able to read Pack Voltage from device. Pack Voltage not calibrated.", Family::KeldPlus,
       std::nullopt,
       [](Calculation&) {
         g_sPackVoltageReadCommand = "SBS";  // cut short: no command
         g_bPackVSupported = true;
       },
       pack},
      {"Failed to update Dataflash with new Pack Voltage Correction. Pack Calibration not "
       "completed.",
       Family::Morlin, std::nullopt, spoilt, pack},
      {"Error writing Sense Resistor values to Dataflash. Please ensure device is not sealed.",
       Family::Morlin, std::nullopt, spoilt, [] { return CalibrateSenseResistor("-2000"); }},
  };
  for (const Failure& failure : failures) {
    SCOPED_TRACE(failure.message);
    Calculation bench(failure.family, failure.output);
    bench.sim.gauge->SetWord(0x0A, static_cast<std::uint16_t>(-2100));
    g_atMODBlocks[2].atFields[10].sValue = "19000";
    failure.arrange(bench);
    EXPECT_EQ(failure.calculate(), 1);
    const std::vector<std::string> texts = bench.sim.MessageTexts();
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(testing::Boxes(bench.sim.platform).back(),
              (Shown{failure.message, MessageStyle::Plain}))
        << texts.back();
  }
}

// Each calculation's whole trace, with the bytes it writes.
TEST(CurrentAndPackCalculations, FollowTheirTraces) {
  {
    Calculation bench(Family::Morlin, kOffsetOutput);
    EXPECT_EQ(CalibrateCCOffset(), 0);
    EXPECT_TRUE(MatchesTrace(bench.Trace(), "calibration/cc-offset-morlin"));
  }
  for (const Family family : {Family::Keld, Family::Quill}) {
    Calculation bench(family);
    EXPECT_EQ(CalibrateCCOffset(), 0);
    EXPECT_TRUE(MatchesTrace(bench.Trace(), "calibration/cc-offset-" + testing::Name(family)));
  }
  {
    Calculation bench(Family::Morlin, kRawOutput);
    EXPECT_EQ(CalibrateBoardOffset(), 0);
    EXPECT_TRUE(MatchesTrace(bench.Trace(), "calibration/board-offset-morlin"));
  }
  for (const Family family : {Family::Morlin, Family::KeldPlus}) {
    Calculation bench(family);
    // MORLIN never reads the pack word, whatever the configuration says.
    g_sPackVoltageReadCommand = "SBS,90";
    g_bPackVSupported = true;
    g_atMODBlocks[2].atFields[10].sValue = "19000";
    EXPECT_EQ(CalibratePackVoltage(12000), 0);
    EXPECT_TRUE(MatchesTrace(bench.Trace(), "calibration/pack-voltage-" + testing::Name(family)));
  }
  {
    Calculation bench(Family::Morlin);
    bench.sim.gauge->SetWord(0x0A, static_cast<std::uint16_t>(-2100));
    const_cast<MODField&>(CalTarget(kCurrentGainFields)).sValue = "1.0";
    EXPECT_EQ(CalibrateSenseResistor("-2000"), 0);
    EXPECT_TRUE(MatchesTrace(bench.Trace(), "calibration/sense-resistor-morlin"));
  }
}

}  // namespace
}  // namespace ombrelay
