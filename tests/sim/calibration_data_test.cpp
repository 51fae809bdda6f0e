#include "sim/calibration_data.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "sim/gauge.h"
#include "sim/sample_gauges.h"

namespace ombrelay::sim {
namespace {

constexpr std::uint8_t kAccess = Gauge::kManufacturerAccessCommand;

// The whole calibration through the panel shows that scales, battery gains and temperature
// offsets make the reports match what is applied; it never touches the pack gain: the applied
// pack voltage over its raw count, times 65536, high byte first where each family keeps it.
TEST(CalibrationData, PackGainMakesThePackReportMatchWhatIsApplied) {
  VirtualClock clock;
  const std::pair<Family, std::size_t> packGains[] = {
      {Family::Morlin, 8}, {Family::KeldPlus, 8}, {Family::Keld, 19}, {Family::Quill, 17}};
  for (const auto& [family, address] : packGains) {
    SCOPED_TRACE(FamilyName(family));
    auto gauge = MakeSampleGauge(family, clock);
    const int applied = gauge->AppliedMeasurements().packMv;
    EXPECT_GT(std::abs(gauge->ReportedMeasurements().packMv - applied), 50);
    ASSERT_TRUE(gauge->WriteWord(kAccess, 0xF081));
    const Bytes raw = gauge->ReadBlock(ManufacturerData::kCommand).value_or(Bytes(26, 0));
    const long gain = std::lround(applied / static_cast<double>(raw[22] | raw[23] << 8) * 65536);
    gauge->SetDataflashBytes(address, Bytes{static_cast<std::uint8_t>(gain >> 8 & 0xFF),
                                            static_cast<std::uint8_t>(gain & 0xFF)});
    EXPECT_NEAR(gauge->ReportedMeasurements().packMv, applied, 1);
  }
}

TEST(CalibrationData, ErasedOrNegativeCalibrationNeverWrapsTheReports) {
  const CalibrationData negative{{-1, 20480, 20480, 20480}, 20480, 20480, {-128, 127}};
  RawReadings raw;
  raw.cells = {12800, 12800, 0, 0};
  raw.temperatures = {5, 65535 / 2};
  raw.coulombCounter = -7;
  // No offset samples count as one: the current is the raw count, not a division by zero.
  const Measurements reported = Calibrated(raw, negative, 2);
  EXPECT_EQ(reported.cellMv[0], 0);
  EXPECT_EQ(reported.cellMv[1], 8000) << "stack 2 from its own scale";
  EXPECT_EQ(reported.temperatures[0], 0);
  EXPECT_EQ(reported.temperatures[1], 32767 + 127);
  EXPECT_EQ(reported.currentMa, -7);
  CalibrationData erasedGain = negative;
  erasedGain.currentGain = -1e31;
  EXPECT_EQ(Calibrated(raw, erasedGain, 2).currentMa, 32767);
}

}  // namespace
}  // namespace ombrelay::sim
