#include <gtest/gtest.h>

#include "sim/gauge.h"

namespace ombrelay::sim {
namespace {

constexpr std::uint8_t kAccess = Gauge::kManufacturerAccessCommand;

bool StatusFlag(Gauge& gauge) {
  gauge.WriteWord(kAccess, ManufacturerData::kManufacturingStatusWord);
  return (gauge.ReadBlock(ManufacturerData::kCommand)->at(1) & 0x80) != 0;
}

TEST(CalibrationMode, WordsEnterAndLeaveAndEveryFlagFollows) {
  VirtualClock clock;
  Gauge keldPlus(Family::KeldPlus, {}, clock);
  Gauge morlin(Family::Morlin, {}, clock);
  EXPECT_FALSE(morlin.ReadWord(0x74)) << "only KELD_PLUS has the flag word";

  for (Gauge* gauge : {&keldPlus, &morlin}) {
    EXPECT_FALSE(gauge->InCalibrationMode());
    EXPECT_FALSE(StatusFlag(*gauge));
    EXPECT_TRUE(gauge->WriteWord(kAccess, 0x002D));
    EXPECT_TRUE(gauge->InCalibrationMode());
    EXPECT_TRUE(StatusFlag(*gauge));
    EXPECT_TRUE(gauge->WriteWord(kAccess, 0x002D));  // entering twice stays in
    EXPECT_TRUE(gauge->InCalibrationMode());
    EXPECT_TRUE(gauge->WriteWord(kAccess, 0xF080));
    EXPECT_FALSE(gauge->InCalibrationMode());
    EXPECT_FALSE(StatusFlag(*gauge));
  }

  // KELD_PLUS: bit 15 of word 0x74, with other bits set; negative as a 16-bit value while in.
  const std::uint16_t out = *keldPlus.ReadWord(0x74);
  keldPlus.WriteWord(kAccess, 0x002D);
  const std::uint16_t in = *keldPlus.ReadWord(0x74);
  EXPECT_EQ(out & 0x8000, 0);
  EXPECT_NE(out, 0);
  EXPECT_EQ(in, out | 0x8000);
  EXPECT_LT(static_cast<std::int16_t>(in), 0);
}

TEST(CalibrationMode, RefusedEntryAndStalledFlag) {
  VirtualClock clock;
  Gauge gauge(Family::KeldPlus, {}, clock);
  gauge.RefuseCalibrationMode(true);
  gauge.WriteWord(kAccess, 0x002D);
  EXPECT_FALSE(gauge.InCalibrationMode());
  EXPECT_EQ(*gauge.ReadWord(0x74) & 0x8000, 0);
  gauge.RefuseCalibrationMode(false);

  // The flag stalls at what it was: the mode moves, the reports do not.
  gauge.StallCalibrationFlag(true);
  gauge.WriteWord(kAccess, 0x002D);
  EXPECT_TRUE(gauge.InCalibrationMode());
  EXPECT_EQ(*gauge.ReadWord(0x74) & 0x8000, 0);
  EXPECT_FALSE(StatusFlag(gauge));
  gauge.StallCalibrationFlag(false);
  EXPECT_TRUE(StatusFlag(gauge));
  gauge.StallCalibrationFlag(true);
  gauge.WriteWord(kAccess, 0xF080);
  EXPECT_NE(*gauge.ReadWord(0x74) & 0x8000, 0);
}

}  // namespace
}  // namespace ombrelay::sim
