#include "calibration/voltage_temperature_correction.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>

#include "calibration/calibration_tables.h"
#include "gauge/calibration_dataflash.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"

namespace ombrelay {
namespace {

using testing::GaugeBench;

constexpr double NS = NoSensorValue;

// A gauge whose calibration data has been read, as entering calibration mode leaves it, with
// the raw readings of block 2 given as text.
class CorrectionBench : public GaugeBench {
 public:
  explicit CorrectionBench(sim::Family family) : GaugeBench(family) {
    CalInit();
    g_bBatteryVSupported = true;
    ReadCalDataflash();
    before = gauge->DataflashBytes(0, 64);
    SetRaw({"12800", "12800", "12800", "12800"}, "25600");
    Restart();
  }

  static void SetRaw(const std::array<const char*, 4>& cells, const char* battery) {
    for (std::size_t cell = 0; cell < 4; ++cell)
      g_atMODBlocks[2].atFields[3 + cell].sValue = cells[cell];
    g_atMODBlocks[2].atFields[11].sValue = battery;
  }
  // Block 1's temperatures, internal to TS4, as entering calibration mode read them.
  static void SetBlockTemperatures(const std::array<const char*, 5>& values) {
    for (std::size_t sensor = 0; sensor < values.size(); ++sensor)
      g_atMODBlocks[1].atFields[sensor].sValue = values[sensor];
  }

  sim::Bytes before;
};

VoltageCalInputs Voltages(std::int16_t v1, std::int16_t v2 = 8000, std::int16_t v3 = 12000,
                          std::int16_t v4 = 16000, std::int16_t cells = 4) {
  return {{v1, v2, v3, v4}, 16000.0, cells};
}

TemperatureCalInputs Temperatures(const std::array<double, 5>& actual,
                                  const std::array<double, 5>& measured = {}) {
  return {actual, measured};
}

TEST(VoltageCorrection, ScalesFromStackVoltagesLandHighByteFirstInEachFamilysFields) {
  for (const sim::Family family :
       {sim::Family::Morlin, sim::Family::KeldPlus, sim::Family::Keld, sim::Family::Quill}) {
    const std::string name(sim::FamilyName(family));
    CorrectionBench bench(family);
    EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4100, 8100, 12450, 16500), {}),
              0)
        << name;
    EXPECT_TRUE(bench.Follows("calibration/voltage-correction-" + name));
  }
}

TEST(VoltageCorrection, BatteryGainTakesTheWholeWordAfterTheCells) {
  CorrectionBench bench(sim::Family::Morlin);
  const VoltageCalInputs voltages = Voltages(4100, 8100, 12450, 16500);
  CorrectionBench::SetRaw({"12800", "12800", "12800", "12800"}, "16000");
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, voltages, {}), 1);
  CorrectionBench::SetRaw({"12800", "12800", "12800", "12800"}, "0");
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, voltages, {}), 1);
  CorrectionBench::SetRaw({"16384", "12800", "12800", "12800"}, "16000");
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(16384), {}), 1);
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 64), bench.before);

  g_bBatteryVSupported = false;
  CorrectionBench::SetRaw({"12800", "12800", "12800", "12800"}, "0");
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, voltages, {}), 0);
  EXPECT_TRUE(bench.Follows("calibration/battery-gain-morlin"));
}

TEST(VoltageCorrection, TheBatteryVoltageIsRoundedBeforeItsGainIsWorkedOut) {
  CorrectionBench bench(sim::Family::Morlin);
  VoltageCalInputs voltages = Voltages(4100, 8100, 12450, 16500);
  voltages.dBatteryVoltage = 16000.5;  // 16000, half to even: a gain of exactly 40960
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, voltages, {}), 0);
  EXPECT_EQ(bench.gauge->DataflashBytes(10, 2), (sim::Bytes{0xA0, 0x00}));
}

TEST(VoltageCorrection, ScalesBeyondASignedWordFailWithoutWriting) {
  struct Case {
    std::array<std::int16_t, 4> volts;
    std::int16_t cells;
    std::array<const char*, 4> raw;
  };
  // In the order of the messages in the trace.
  const Case failures[] = {
      {{8192, 8000, 32767, 32767}, 2, {"16384", "12800", "0", "0"}},
      {{13107, 8000, 32767, 32767}, 2, {"13107.2", "12800", "0", "0"}},
      {{16384, 8000, 32767, 32767}, 2, {"16384", "12800", "0", "0"}},
      {{1000, 8000, 32767, 32767}, 2, {"4000", "1", "0", "0"}},
      {{4000, 8000, 32767, 32767}, 2, {"12800", "0", "0", "0"}},
      {{16384, 8000, 32767, 32767}, 2, {"16384", "0", "0", "0"}},
      {{4000, 8000, 32767, 32767}, 2, {"12800", "", "0", "0"}},
      {{4000, 8000, 32767, 32767}, 4, {"12800", "12800", "1", "0"}},
      {{1000, 2000, 3000, 32767}, 4, {"4000", "4000", "4000", "1"}},
  };
  CorrectionBench bench(sim::Family::Morlin);
  g_bBatteryVSupported = false;
  for (const Case& c : failures) {
    CorrectionBench::SetRaw(c.raw, "25600");
    const VoltageCalInputs voltages{c.volts, 16000.0, c.cells};
    EXPECT_EQ(CalibrateVoltageandTemperature(true, false, voltages, {}), 1) << c.volts[0];
  }
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 64), bench.before);
  EXPECT_TRUE(bench.Follows("calibration/cell-scale-limits-morlin"));

  // Patched bytes of the failures stay local; a new calibration reads the data afresh.
  ReadCalDataflash();
  bench.Restart();
  CorrectionBench::SetRaw({"21847", "12800", "0", "0"}, "25600");
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(10923, 8000, 32767, 32767, 2), {}),
            0);
  CorrectionBench::SetRaw({"12800", "12800", "0", "0"}, "25600");
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4000, 8000, 32767, 32767, 2), {}),
            0);
  EXPECT_TRUE(bench.Follows("calibration/cell-scale-writes-morlin"));
}

TEST(TemperatureCorrection, OffsetIsTheRoundedDifferenceInTenthsPlusTheCurrentOffset) {
  struct Case {
    double actual, measured, current;
    Status result;
    std::uint8_t out;
  };
  const Case cases[] = {
      {25.0, 24.3, 5, 0, 12},  {20.0, 21.0, 0, 0, 246},  {12.7, 0.0, 0, 0, 127},
      {-12.8, 0.0, 0, 0, 128}, {0.0, 0.1, 0, 0, 255},    {12.8, 0.0, 0, 1, 0xAA},
      {0.0, 12.9, 0, 1, 0xAA}, {10.0, 0.0, 30, 1, 0xAA},
  };
  for (const Case& c : cases) {
    std::uint8_t out = 0xAA;
    EXPECT_EQ(ComputeTempOffset(c.actual, c.measured, c.current, out), c.result) << c.actual;
    EXPECT_EQ(out, c.out) << c.actual;
  }
  std::uint8_t out = 0;
  EXPECT_THROW(ComputeTempOffset(4000.0, 0.0, 0.0, out), RuntimeError);
}

TEST(TemperatureCorrection, EachFamilyTakesItsOwnTargetsAndMeasuredValues) {
  {
    CorrectionBench bench(sim::Family::Morlin);
    CorrectionBench::SetBlockTemperatures({"20.0", "24.3", "21.0", "22.0", "23.0"});
    g_atCalParameters[0].atFields[12].sValue = "5";
    const std::array<double, 5> entered = {99.0, 99.0, 99.0, 99.0, 99.0};  // not used here
    EXPECT_EQ(CalibrateVoltageandTemperature(false, true, {},
                                             Temperatures({NS, 25.0, 20.0, 22.5, 21.0}, entered)),
              0);
    // Only -300.0 itself marks a sensor as not selected.
    CorrectionBench::SetBlockTemperatures({"20.0", "24.3", "-300.0", "22.0", "23.0"});
    EXPECT_EQ(
        CalibrateVoltageandTemperature(false, true, {}, Temperatures({NS, NS, -299.9, NS, NS})), 0);
    EXPECT_TRUE(bench.Follows("calibration/temperature-correction-morlin"));
  }
  {
    // Entering calibration mode leaves block 1 stale on this family: TS3 goes by what the panel
    // showed, like the others.
    CorrectionBench bench(sim::Family::KeldPlus);
    CorrectionBench::SetBlockTemperatures({"0.0", "0.0", "0.0", "0.0", "0.0"});
    EXPECT_EQ(CalibrateVoltageandTemperature(
                  false, true, {}, Temperatures({25.0, NS, NS, 22.5, 99.0}, {24.0, 0, 0, 22.0, 0})),
              0);
    EXPECT_TRUE(bench.Follows("calibration/temperature-correction-keld_plus"));
  }
  {
    CorrectionBench bench(sim::Family::Quill);
    EXPECT_EQ(
        CalibrateVoltageandTemperature(
            false, true, {}, Temperatures({40.0, 26.0, 23.0, NS, NS}, {0.0, 25.0, 24.0, 0.0, 0.0})),
        0);
    EXPECT_TRUE(bench.Follows("calibration/temperature-correction-quill"));
  }
  {
    // TS2 is selected by its own entry and worked out from TS1's known temperature against the
    // gauge's live one.
    CorrectionBench bench(sim::Family::Keld);
    bench.gauge->SetWord(0x08, 2982);  // 25.0 degrees C
    g_atCalParameters[1].atFields[5].sValue = "3";
    EXPECT_EQ(
        CalibrateVoltageandTemperature(
            false, true, {}, Temperatures({40.0, 27.0, 0.0, NS, NS}, {0.0, 26.0, 0.0, 0.0, 0.0})),
        0);
    bench.gauge->FailNext(sim::Transfer::WordRead, 1);
    EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4100), {}), 1);
    EXPECT_EQ((sim::Bytes{g_abCalData[21], g_abCalData[22]}), (sim::Bytes{0x52, 0x00}));
    EXPECT_TRUE(bench.Follows("calibration/temperature-correction-keld"));
  }
}

TEST(TemperatureCorrection, OffsetsOutOfRangeNameTheirSensorAndTheFirstCheckWins) {
  {
    // Sealed, so that the write would fail as well.
    CorrectionBench bench(sim::Family::Morlin);
    bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
    CorrectionBench::SetBlockTemperatures({"0.0", "0.0", "0.0", "0.0", "0.0"});
    const auto run = [](bool voltage, const std::array<double, 5>& actual) {
      return CalibrateVoltageandTemperature(voltage, true, Voltages(4000), Temperatures(actual));
    };
    EXPECT_EQ(run(false, {NS, NS, NS, 12.8, NS}), 1);
    EXPECT_EQ(run(false, {NS, NS, NS, NS, 12.8}), 1);
    EXPECT_EQ(run(false, {12.8, 12.8, NS, NS, NS}), 1);
    EXPECT_EQ(run(false, {NS, NS, -12.9, NS, NS}), 1);
    CorrectionBench::SetRaw({"12800", "12800", "12800", "12800"}, "16000");
    EXPECT_EQ(run(true, {NS, 12.8, NS, NS, NS}), 1);
    CorrectionBench::SetRaw({"12800", "0", "12800", "12800"}, "25600");
    EXPECT_EQ(run(false, {NS, 12.8, NS, NS, NS}), 1);
    EXPECT_TRUE(bench.Follows("calibration/temperature-limits-morlin"));
  }
  {
    CorrectionBench bench(sim::Family::KeldPlus);
    EXPECT_EQ(CalibrateVoltageandTemperature(false, true, {}, Temperatures({12.8, NS, NS, NS, NS})),
              1);
    EXPECT_EQ(CalibrateVoltageandTemperature(false, true, {}, Temperatures({NS, NS, 12.8, NS, NS})),
              1);
    EXPECT_TRUE(bench.Follows("calibration/temperature-limits-keld_plus"));
  }
  {
    CorrectionBench bench(sim::Family::Quill);
    for (const std::array<double, 5>& actual :
         {std::array<double, 5>{NS, 12.8, NS, NS, NS}, std::array<double, 5>{NS, NS, 12.8, NS, NS},
          std::array<double, 5>{NS, 12.8, 12.8, NS, NS},
          std::array<double, 5>{NS, -300.5, NS, NS, NS}}) {
      EXPECT_EQ(CalibrateVoltageandTemperature(false, true, {}, Temperatures(actual)), 1);
    }
    EXPECT_TRUE(bench.Follows("calibration/temperature-limits-quill"));
  }
  {
    CorrectionBench bench(sim::Family::Keld);
    bench.gauge->SetWord(0x08, 2982);  // 25.0 degrees C
    const TemperatureCalInputs temperatures =
        Temperatures({NS, 40.0, 0.0, NS, NS}, {0.0, 40.0, 0.0, 0.0, 0.0});
    bench.gauge->FailNext(sim::Transfer::WordRead, 1);
    CorrectionBench::SetRaw({"16384", "12800", "12800", "12800"}, "25600");
    EXPECT_EQ(CalibrateVoltageandTemperature(true, true, Voltages(16384), temperatures), 1);
    EXPECT_EQ(CalibrateVoltageandTemperature(false, true, {}, temperatures), 1);
    EXPECT_EQ(CalibrateVoltageandTemperature(false, true, {}, temperatures), 1);
    EXPECT_TRUE(bench.Follows("calibration/temperature-limits-keld"));
  }
}

TEST(CalibrationWrite, WritesEvenWithNothingSelectedAndReportsAFailedWrite) {
  CorrectionBench bench(sim::Family::Morlin);
  EXPECT_EQ(CalibrateVoltageandTemperature(false, false, {}, {}), 0);
  EXPECT_EQ(bench.gauge->DataflashBytes(0, 64), bench.before);
  bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4000), {}), 1);
  EXPECT_TRUE(bench.Follows("calibration/calibration-write-morlin"));

  CorrectionBench quill(sim::Family::Quill);
  quill.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4000), {}), 1);
  EXPECT_TRUE(quill.Follows("calibration/calibration-write-quill"));
}

}  // namespace
}  // namespace ombrelay
