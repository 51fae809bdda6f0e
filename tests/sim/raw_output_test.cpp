#include "sim/raw_output.h"

#include <gtest/gtest.h>

#include "sim/gauge.h"
#include "sim/sample_gauges.h"

namespace ombrelay::sim {
namespace {

constexpr std::uint8_t kAccess = Gauge::kManufacturerAccessCommand;
constexpr std::uint8_t kData = ManufacturerData::kCommand;

std::optional<Bytes> RawBlockAfter(Gauge& gauge, std::uint16_t word) {
  EXPECT_TRUE(gauge.WriteWord(kAccess, word));
  return gauge.ReadBlock(kData);
}

TEST(RawOutput, BlockLayoutAndStatusByWord) {
  VirtualClock clock;
  Gauge gauge(Family::Morlin, {}, clock);
  Measurements applied;
  applied.cellMv = {4000, 3700, 3000, 0};
  applied.batteryMv = 10700;
  applied.packMv = 10650;
  applied.temperatures = {2982, 2981, 2983, 2980, 2979, 2990, 2991};
  applied.currentMa = -512;
  gauge.ApplyMeasurements(applied);
  ConverterErrors errors;
  errors.cellGain = {0.0, 0.025, -0.018, 0.0};
  errors.cellOffset = {0, 3, -4, -5};
  errors.batteryGain = 0.01;
  errors.packGain = -0.02;
  errors.temperature = {15, -20, 12, -8, 5, 0, 0};
  errors.coulombCounterOffset = -112;
  errors.boardOffset = 9;
  gauge.SetConverterErrors(errors);

  const auto raw = RawBlockAfter(gauge, 0xF081);
  ASSERT_TRUE(raw);
  ASSERT_EQ(raw->size(), 26U);
  EXPECT_EQ(gauge.RawOutputStatus(), 1);
  // Cell 1 at 4000 mV gives 12800; a cell below zero counts reads 0. Coulomb counter -615:
  // current plus both offsets.
  const Bytes expected = {(*raw)[0], 1,    0x99, 0xFD, 0x00, 0x32, 0x6B, 0x2F, 0xCF,
                          0x24,      0x00, 0x00, 0xB5, 0x0B, 0x91, 0x0B, 0xB3, 0x0B,
                          0x9C,      0x0B, 0xA8, 0x0B, 0x76, 0x82, 0x16, 0x87};
  EXPECT_EQ(*raw, expected);

  // For the offset the input is shorted: status 2 and the converter's own offset alone.
  const auto offset = RawBlockAfter(gauge, 0xF082);
  ASSERT_TRUE(offset);
  EXPECT_EQ((*offset)[1], 2);
  EXPECT_EQ((*offset)[2], 0x90);
  EXPECT_EQ((*offset)[3], 0xFF);
  EXPECT_EQ(Bytes(offset->begin() + 4, offset->end()), Bytes(raw->begin() + 4, raw->end()));

  // The exit word stops the stream but not calibration mode, which the switch word ends.
  EXPECT_TRUE(gauge.WriteWord(kAccess, CalibrationMode::kSwitchWord));
  EXPECT_FALSE(RawBlockAfter(gauge, 0xF080));
  EXPECT_EQ(gauge.RawOutputStatus(), 0);
  EXPECT_TRUE(gauge.InCalibrationMode());
  EXPECT_TRUE(gauge.WriteWord(kAccess, CalibrationMode::kSwitchWord));
  EXPECT_FALSE(gauge.InCalibrationMode());
  // Another block selected while streaming answers in its place.
  EXPECT_TRUE(RawBlockAfter(gauge, 0xF081));
  EXPECT_EQ(RawBlockAfter(gauge, 0x0071)->size(), 12U);
  EXPECT_EQ(gauge.RawOutputStatus(), 1);
}

TEST(RawOutput, CounterRunsOnTheClockStallsAndTheBlockCanComeShort) {
  VirtualClock clock;
  auto gauge = MakeSampleGauge(Family::Morlin, clock);
  const auto counter = [&] { return RawBlockAfter(*gauge, 0xF081).value_or(Bytes(1, 0))[0]; };
  clock.Advance(250 - clock.NowMs() % 250);  // at the start of a reading
  const std::uint8_t first = counter();
  clock.Advance(249);
  EXPECT_EQ(counter(), first);
  // One step per 250 ms, from 255 round to 1; never 0.
  std::uint8_t last = first;
  for (int step = 0; step < 300; ++step) {
    clock.Advance(250);
    const std::uint8_t now = counter();
    EXPECT_EQ(now, last % 255 + 1) << "step " << step;
    last = now;
  }

  // Stalled: the counter stands while the readings stay fresh.
  gauge->StallRawCounter(true);
  const Bytes before = *RawBlockAfter(*gauge, 0xF081);
  clock.Advance(5000);
  Measurements hotter = gauge->AppliedMeasurements();
  hotter.cellMv[0] = 4000;
  gauge->ApplyMeasurements(hotter);
  const Bytes stalled = *gauge->ReadBlock(kData);
  EXPECT_EQ(stalled[0], before[0]);
  EXPECT_NE(stalled[4] | stalled[5] << 8, before[4] | before[5] << 8);
  gauge->StallRawCounter(false);
  EXPECT_NE(counter(), before[0]);

  gauge->AnswerNextBlockReadsWithLength(1, 20);
  EXPECT_EQ(gauge->ReadBlock(kData)->size(), 20U);
  EXPECT_EQ(gauge->ReadBlock(kData)->size(), 26U);
}

}  // namespace
}  // namespace ombrelay::sim
