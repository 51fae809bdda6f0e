#include "sim/calibration_data.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "sim/gauge.h"
#include "sim/sample_gauges.h"

namespace ombrelay::sim {
namespace {

constexpr std::uint8_t kAccess = Gauge::kManufacturerAccessCommand;

// Where the program keeps each calibration value, from the start of the calibration area.
struct Layout {
  Family family;
  std::array<std::size_t, 4> cellScale;
  std::optional<std::size_t> batteryGain;
  std::size_t packGain;
  std::array<std::optional<std::size_t>, 5> temperatureOffset;  // internal, TS1 to TS4
};

const Layout kLayouts[] = {
    {Family::Morlin, {0, 2, 4, 6}, 10, 8, {26, 27, 28, 29, 30}},
    {Family::KeldPlus, {0, 2, 4, 6}, 10, 8, {26, 27, 28, 29, 30}},
    {Family::Keld, {21, 23, 25, 27}, std::nullopt, 19, {11, 12, 13, std::nullopt, std::nullopt}},
    {Family::Quill, {8, 10, 12, 14}, std::nullopt, 17, {23, 24, 25, 26, 27}},
};

void PutWord(Gauge& gauge, std::size_t address, long value) {
  gauge.SetDataflashBytes(address, Bytes{static_cast<std::uint8_t>(value >> 8 & 0xFF),
                                         static_cast<std::uint8_t>(value & 0xFF)});
}

int WordAt(const Bytes& block, std::size_t offset) {
  return block[offset] | block[offset + 1] << 8;
}

std::array<long, 4> Stacks(const Measurements& m) {
  std::array<long, 4> stacks{};
  long sum = 0;
  for (std::size_t cell = 0; cell < 4; ++cell)
    stacks[cell] = sum += m.cellMv[cell];
  return stacks;
}

// A calibration done by hand as the program does it, from the raw block on the bus: scale n is
// the applied stack n over the raw sum of cells 1 to n, a gain the applied voltage over its raw
// count, both times 65536; a temperature offset moves by actual minus measured.
TEST(CalibrationData, ProgramsCalibrationMakesTheReportsMatchWhatIsApplied) {
  VirtualClock clock;
  for (const Layout& layout : kLayouts) {
    SCOPED_TRACE(FamilyName(layout.family));
    auto gauge = MakeSampleGauge(layout.family, clock);
    const Measurements applied = gauge->AppliedMeasurements();
    const Measurements before = gauge->ReportedMeasurements();
    const int cells = applied.cellMv[3] == 0 ? 3 : 4;

    long worst = 0;
    for (int cell = 0; cell < cells; ++cell)
      worst = std::max(worst, std::abs(Stacks(before)[cell] - Stacks(applied)[cell]));
    EXPECT_GT(worst, 50) << "visibly off before the calibration";
    EXPECT_EQ(before.cellMv[3] == 0, cells == 3) << "a cell not configured reads 0";

    ASSERT_TRUE(gauge->WriteWord(kAccess, 0xF081));
    const Bytes raw = gauge->ReadBlock(ManufacturerData::kCommand).value_or(Bytes(26, 0));
    long rawSum = 0;
    for (int cell = 0; cell < cells; ++cell) {
      rawSum += WordAt(raw, 4 + 2 * static_cast<std::size_t>(cell));
      PutWord(*gauge, layout.cellScale[cell],
              std::lround(Stacks(applied)[cell] / static_cast<double>(rawSum) * 65536));
    }
    if (layout.batteryGain) {
      PutWord(*gauge, *layout.batteryGain,
              std::lround(applied.batteryMv / static_cast<double>(WordAt(raw, 24)) * 65536));
    }
    PutWord(*gauge, layout.packGain,
            std::lround(applied.packMv / static_cast<double>(WordAt(raw, 22)) * 65536));
    for (std::size_t sensor = 0; sensor < 5; ++sensor) {
      const auto offset = layout.temperatureOffset[sensor];
      if (!offset) continue;
      const auto current = static_cast<std::int8_t>(gauge->DataflashBytes(*offset, 1)[0]);
      EXPECT_NE(before.temperatures[sensor], applied.temperatures[sensor]) << sensor;
      const long moved = applied.temperatures[sensor] - before.temperatures[sensor] + current;
      gauge->SetDataflashBytes(*offset, Bytes{static_cast<std::uint8_t>(moved & 0xFF)});
    }

    const Measurements after = gauge->ReportedMeasurements();
    for (int cell = 0; cell < cells; ++cell)
      EXPECT_NEAR(Stacks(after)[cell], Stacks(applied)[cell], 1) << "stack " << cell + 1;
    if (layout.batteryGain) {
      EXPECT_NEAR(after.batteryMv, applied.batteryMv, 1);
    }
    EXPECT_NEAR(after.packMv, applied.packMv, 1);
    for (std::size_t sensor = 0; sensor < 5; ++sensor) {
      if (layout.temperatureOffset[sensor]) {
        EXPECT_EQ(after.temperatures[sensor], applied.temperatures[sensor]) << sensor;
      }
    }
    // What the words report follows the dataflash at once.
    EXPECT_EQ(gauge->ReadWord(0x3F), after.cellMv[0]);
    const auto sensor = layout.family == Family::Keld ? Measurements::kTS2 : Measurements::kTS1;
    EXPECT_EQ(gauge->ReadWord(0x08), applied.temperatures[sensor]);
  }
}

TEST(CalibrationData, MorlinTemperatureWordFollowsSystemConfiguration) {
  VirtualClock clock;
  auto gauge = MakeSampleGauge(Family::Morlin, clock);
  const Measurements reported = gauge->ReportedMeasurements();
  const std::uint16_t internal = reported.temperatures[Measurements::kInternal];
  const std::uint16_t ts1 = reported.temperatures[Measurements::kTS1];
  ASSERT_NE(internal, ts1);
  EXPECT_EQ(gauge->ReadWord(0x08), ts1) << "the sample maps TS1";

  // Second byte of System Configuration: bits 3, 4 and 6 all clear select the internal sensor.
  const std::pair<std::uint8_t, std::uint16_t> mappings[] = {
      {0x02, internal}, {0xA7, internal}, {0x0A, ts1}, {0x12, ts1}, {0x42, ts1}, {0xFF, ts1}};
  for (const auto& [byte, expected] : mappings) {
    gauge->SetDataflashBytes(321, Bytes{byte});
    EXPECT_EQ(gauge->ReadWord(0x08), expected) << static_cast<int>(byte);
  }
}

TEST(CalibrationData, ErasedOrNegativeCalibrationNeverWrapsTheReports) {
  const CalibrationData negative{{-1, 20480, 20480, 20480}, 20480, 20480, {-128, 127}};
  RawReadings raw;
  raw.cells = {12800, 12800, 0, 0};
  raw.temperatures = {5, 65535 / 2};
  const Measurements reported = Calibrated(raw, negative, 2, -7);
  EXPECT_EQ(reported.cellMv[0], 0);
  EXPECT_EQ(reported.cellMv[1], 8000) << "stack 2 from its own scale";
  EXPECT_EQ(reported.temperatures[0], 0);
  EXPECT_EQ(reported.temperatures[1], 32767 + 127);
  EXPECT_EQ(reported.currentMa, -7);
}

}  // namespace
}  // namespace ombrelay::sim
