#include "calibration/voltage_temperature_correction.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "calibration/calibration_tables.h"
#include "gauge/calibration_dataflash.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"

namespace ombrelay {
namespace {

using testing::GaugeBench;
using Lines = std::vector<std::string>;

constexpr const char* kGeneralError =
    "Error during Voltage and Temperature Calibration. Calibration not performed.";

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

  sim::Bytes Stored(std::size_t address, std::size_t count) const {
    return gauge->DataflashBytes(address, count);
  }
  sim::Bytes Before(std::size_t address, std::size_t count) const {
    return {before.begin() + static_cast<std::ptrdiff_t>(address),
            before.begin() + static_cast<std::ptrdiff_t>(address + count)};
  }
  bool Wrote() const { return !OperationsNamed("WriteSMBusBlock").empty(); }

  sim::Bytes before;
};

VoltageCalInputs Voltages(std::int16_t v1, std::int16_t v2 = 8000, std::int16_t v3 = 12000,
                          std::int16_t v4 = 16000, std::int16_t cells = 4) {
  return {{v1, v2, v3, v4}, 16000.0, cells};
}

TEST(VoltageCorrection, ScalesFromStackVoltagesLandHighByteFirstInEachFamilysFields) {
  struct Case {
    sim::Family family;
    std::size_t firstScale;  // dataflash address of cell 1's scale
  };
  for (const Case c : {Case{sim::Family::Morlin, 0}, Case{sim::Family::KeldPlus, 0},
                       Case{sim::Family::Keld, 21}, Case{sim::Family::Quill, 8}}) {
    CorrectionBench bench(c.family);
    EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4000), {}), 0);
    EXPECT_TRUE(bench.MessageTexts().empty());
    // 4000 mV over 12800 and each stack over the summed cells below it: 20480 every time.
    for (std::size_t cell = 0; cell < 4; ++cell) {
      EXPECT_EQ(bench.Stored(c.firstScale + 2 * cell, 2), (sim::Bytes{0x50, 0x00}))
          << static_cast<int>(c.family) << " cell " << cell + 1;
    }
  }
}

TEST(VoltageCorrection, BatteryGainTakesTheWholeWordOnRowFamiliesOnly) {
  CorrectionBench bench(sim::Family::Morlin);
  // 16000 over 25600 gives 40960: above a signed word and still written.
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4000), {}), 0);
  EXPECT_EQ(bench.Stored(10, 2), (sim::Bytes{0xA0, 0x00}));

  CorrectionBench::SetRaw({"12800", "12800", "12800", "12800"}, "16000");
  bench.Restart();
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4000), {}), 1);
  EXPECT_EQ(
      bench.MessageTexts(),
      Lines{"Battery Voltage Correction is beyond allowed value. Calibration not performed."});
  EXPECT_FALSE(bench.Wrote());

  // A raw battery reading of 0 is a division by zero.
  CorrectionBench::SetRaw({"12800", "12800", "12800", "12800"}, "0");
  bench.Restart();
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4000), {}), 1);
  EXPECT_EQ(bench.MessageTexts(), Lines{kGeneralError});

  // Without a battery voltage the reading is not looked at.
  g_bBatteryVSupported = false;
  bench.Restart();
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4000), {}), 0);
}

TEST(VoltageCorrection, ScalesBeyondASignedWordFailWithoutWriting) {
  struct Case {
    std::int16_t volts;
    const char* raw1;
    const char* raw2;
    std::int16_t cells;
    std::optional<std::string> message;
    sim::Bytes cell1;
  };
  const std::string cell1Range =
      "Correction for Cell Voltage 1 is beyond allowed range. Calibration not performed.";
  const Case cases[] = {
      {10923, "21847", "12800", 2, std::nullopt, {0x7F, 0xFF}},  // 32767, the largest stored
      {8192, "16384", "12800", 2, kGeneralError, {}},            // 32768
      {13107, "13107.2", "12800", 2, kGeneralError, {}},         // exactly 65535
      {16384, "16384", "12800", 2, cell1Range, {}},              // 65536
      {1000,
       "4000",
       "1",
       2,
       "Correction for Cell Voltage 2 is beyond allowed range. Calibration not performed.",
       {}},
      {4000, "12800", "0", 2, "Raw calibration value of zero in voltage rows.", {}},
      {4000, "12800", "12800", 2, std::nullopt, {0x50, 0x00}},  // cells 3 and 4 left alone
      {4000, "12800", "", 2, kGeneralError, {}},                // no number
  };
  for (const Case& c : cases) {
    CorrectionBench bench(sim::Family::Morlin);
    CorrectionBench::SetRaw({c.raw1, c.raw2, "0", "0"}, "25600");
    const Status result = CalibrateVoltageandTemperature(
        true, false, Voltages(c.volts, 8000, 32767, 32767, c.cells), {});
    if (c.message) {
      EXPECT_EQ(result, 1) << c.volts;
      EXPECT_EQ(bench.MessageTexts(), Lines{*c.message}) << c.volts;
      EXPECT_FALSE(bench.Wrote()) << c.volts;
      EXPECT_EQ(bench.Stored(0, 64), bench.before) << c.volts;
    } else {
      EXPECT_EQ(result, 0) << c.volts;
      EXPECT_EQ(bench.Stored(0, 2), c.cell1) << c.volts;
      EXPECT_EQ(bench.Stored(4, 4), bench.Before(4, 4)) << c.volts;
    }
  }
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

TEST(TemperatureCorrection, MorlinTakesMeasuredValuesFromTheTemperatureBlock) {
  CorrectionBench bench(sim::Family::Morlin);
  const std::array<const char*, 5> blockValues = {"20.0", "24.3", "21.0", "22.0", "23.0"};
  for (std::size_t sensor = 0; sensor < 5; ++sensor) {
    g_atMODBlocks[1].atFields[sensor].sValue = blockValues[sensor];
  }
  g_atCalParameters[0].atFields[12].sValue = "5";
  TemperatureCalInputs temperatures;
  temperatures.adActual = {NoSensorValue, 25.0, 20.0, 22.0, 23.0};
  temperatures.adMeasured = {99.0, 99.0, 99.0, 99.0, 99.0};
  EXPECT_EQ(CalibrateVoltageandTemperature(false, true, {}, temperatures), 0);
  EXPECT_EQ(bench.Stored(26, 5), (sim::Bytes{bench.before[26], 12, 246, 0, 0}));

  // Only -300.0 itself marks a sensor as not selected.
  temperatures.adActual = {NoSensorValue, NoSensorValue, -299.9, NoSensorValue, NoSensorValue};
  g_atMODBlocks[1].atFields[2].sValue = "-300.0";
  bench.Restart();
  EXPECT_EQ(CalibrateVoltageandTemperature(false, true, {}, temperatures), 0);
  EXPECT_EQ(bench.Stored(28, 1), (sim::Bytes{1}));
}

TEST(TemperatureCorrection, AnOffsetOutOfRangeNamesItsSensorAndWritesNothing) {
  struct Case {
    sim::Family family;
    std::size_t sensor;
    const char* message;
  };
  const Case cases[] = {
      {sim::Family::KeldPlus, 0,
       "Temperature Correction beyond allowed range for Internal Temperature Calibration.  "
       "Allowed range approximately plus or minus 12.7 deg K from default value of 0. No "
       "calibration data written."},
      {sim::Family::Quill, 1,
       "Temperature Correction beyond allowed range for External Temperature Sensor 1.  Allowed "
       "range approximately plus or minus 12.7 deg K from default value. No calibration data "
       "written."},
      {sim::Family::KeldPlus, 2,
       "Temperature Correction beyond allowed range for External Temperature Sensor 2.  Allowed "
       "range approximately plus or minus 12 deg K. Please correct value. No calibration data "
       "written."},
      {sim::Family::Quill, 2,
       "Temperature Correction beyond allowed range for External Temperature Sensor 2.  Allowed "
       "range is approximately plus or minus 12.7 deg K from default value. No calibration data "
       "written."},
      {sim::Family::Morlin, 3,
       "Temperature Correction beyond allowed range for External Temperature Sensor 3.  Allowed "
       "range is approximately plus or minus 12.7 deg K from default value. No calibration data "
       "written."},
      {sim::Family::Morlin, 4,
       "Temperature Correction beyond allowed range for External Temperature Sensor 4.  Allowed "
       "range is approximately plus or minus 12.7 deg K from default value. No calibration data "
       "written."},
  };
  for (const Case& c : cases) {
    CorrectionBench bench(c.family);
    for (std::size_t sensor = 0; sensor < 5; ++sensor)
      g_atMODBlocks[1].atFields[sensor].sValue = "0.0";
    TemperatureCalInputs temperatures;
    temperatures.adMeasured = {0.0, 0.0, 0.0, 0.0, 0.0};
    temperatures.adActual[c.sensor] = 12.8;  // 128 tenths
    EXPECT_EQ(CalibrateVoltageandTemperature(true, true, Voltages(4000), temperatures), 1)
        << c.sensor;
    EXPECT_EQ(bench.MessageTexts(), Lines{c.message}) << c.sensor;
    EXPECT_FALSE(bench.Wrote()) << c.sensor;
  }
}

TEST(TemperatureCorrection, KeldReadsItsLiveTemperatureForTs2AndWhateverWasSelected) {
  CorrectionBench bench(sim::Family::Keld);
  bench.gauge->SetWord(0x08, 2982);  // 25.0 degrees C
  g_atCalParameters[1].atFields[5].sValue = "3";
  TemperatureCalInputs temperatures;
  // Internal changes nothing on KELD; TS2 is selected by its own entry and worked out from
  // TS1's known temperature against the live one.
  temperatures.adActual = {40.0, 27.0, 0.0, NoSensorValue, NoSensorValue};
  temperatures.adMeasured = {0.0, 26.0, 0.0, 0.0, 0.0};
  EXPECT_EQ(CalibrateVoltageandTemperature(false, true, {}, temperatures), 0);
  EXPECT_EQ(bench.Stored(11, 3), (sim::Bytes{bench.before[11], 10, 23}));
  EXPECT_TRUE(bench.MessageTexts().empty());

  // A failed read stops a voltage-only run: scales patched locally, nothing written.
  bench.Restart();
  bench.gauge->FailNext(sim::Transfer::WordRead, 1);
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4100), {}), 1);
  EXPECT_EQ(bench.MessageTexts(),
            Lines{"Unable to read current SBS Temperature from device. Temperature calibration "
                  "not completed. Please retry."});
  EXPECT_FALSE(bench.Wrote());
  const sim::Bytes scale{0x52, 0x00};  // 4100 mV over 12800
  EXPECT_EQ((sim::Bytes{g_abCalData[21], g_abCalData[22]}), scale);
  EXPECT_EQ(bench.Stored(21, 2), bench.Before(21, 2));
  EXPECT_NE(bench.Before(21, 2), scale);
}

TEST(CalibrationWrite, WritesEvenWithNothingSelectedAndReportsAFailedWrite) {
  CorrectionBench bench(sim::Family::Morlin);
  EXPECT_EQ(CalibrateVoltageandTemperature(false, false, {}, {}), 0);
  EXPECT_EQ(bench.OperationsNamed("WriteSMBusBlock").size(), 2U);
  EXPECT_EQ(bench.Stored(0, 64), bench.before);

  bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  bench.Restart();
  EXPECT_EQ(CalibrateVoltageandTemperature(true, false, Voltages(4000), {}), 1);
  ASSERT_FALSE(bench.MessageTexts().empty());
  EXPECT_EQ(bench.MessageTexts().back(),
            "Unable to write new calibration values to Dataflash. Ensure device is not sealed. "
            "Please repeat this calibration.");
}

}  // namespace
}  // namespace ombrelay
