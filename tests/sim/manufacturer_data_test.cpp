#include <gtest/gtest.h>

#include "sim/gauge.h"
#include "sim/sample_gauges.h"

namespace ombrelay::sim {
namespace {

constexpr std::uint8_t kAccess = Gauge::kManufacturerAccessCommand;
constexpr std::uint8_t kData = ManufacturerData::kCommand;

Bytes Select(Gauge& gauge, std::uint16_t word) {
  EXPECT_TRUE(gauge.WriteWord(kAccess, word));
  return gauge.ReadBlock(kData).value_or(Bytes{});
}

// A perfect converter with nominal calibration in dataflash reports what is applied: four cells
// in the second byte of System Configuration, scales and gains 20480, temperature offsets 0.
void CalibrateNominally(Gauge& gauge) {
  Bytes rows;
  for (int word = 0; word < 6; ++word)
    rows.insert(rows.end(), {0x50, 0x00});
  rows.resize(32, 0);
  gauge.SetDataflashBytes(0, rows);
  gauge.SetDataflashBytes(321, Bytes{0x03});
}

TEST(ManufacturerData, AnswersTheLastSelectedBlockMadeAtTheRead) {
  VirtualClock clock;
  Gauge gauge(Family::Morlin, {}, clock);
  CalibrateNominally(gauge);
  EXPECT_FALSE(gauge.ReadBlock(kData)) << "nothing selected yet";

  Measurements applied;
  applied.cellMv = {3701, 3802, 3903, 0x1234};
  applied.batteryMv = 11406;
  applied.packMv = 0x3EDC;
  applied.temperatures = {2985, 2981, 2983, 2980, 2979, 2982, 0x0CB2};
  gauge.ApplyMeasurements(applied);
  EXPECT_EQ(Select(gauge, 0x0071),
            (Bytes{0x75, 0x0E, 0xDA, 0x0E, 0x3F, 0x0F, 0x34, 0x12, 0x8E, 0x2C, 0xDC, 0x3E}));
  EXPECT_EQ(Select(gauge, 0x0072), (Bytes{0xA9, 0x0B, 0xA5, 0x0B, 0xA7, 0x0B, 0xA4, 0x0B, 0xA3,
                                          0x0B, 0xA6, 0x0B, 0xB2, 0x0C}));
  // A word that selects nothing here leaves the selection; new values show at the next read.
  EXPECT_TRUE(gauge.WriteWord(kAccess, 0x0100));
  applied.temperatures[0] = 3000;
  gauge.ApplyMeasurements(applied);
  EXPECT_EQ(gauge.ReadBlock(kData)->at(0), 0xB8);
  EXPECT_FALSE(gauge.WriteBlock(kData, Bytes(14, 0))) << "manufacturer data is read-only";

  // Operation Status never holds the security mode alone, so a reader must mask it out.
  gauge.SetSecurityMode(SecurityMode::Sealed);
  const Bytes status = Select(gauge, 0x0054);
  ASSERT_GE(status.size(), 2U);
  EXPECT_EQ(status[1] & 3, static_cast<int>(SecurityMode::Sealed));
  EXPECT_NE(status[1] & ~3, 0);
}

TEST(Measurements, WordsOfEachFamilyCarryTheReportedValues) {
  VirtualClock clock;
  for (const Family family : {Family::Keld, Family::Quill, Family::Morlin, Family::KeldPlus}) {
    SCOPED_TRACE(FamilyName(family));
    auto gauge = MakeSampleGauge(family, clock);
    const Measurements applied = gauge->AppliedMeasurements();
    const Measurements m = gauge->ReportedMeasurements();
    EXPECT_GE(applied.cellMv[0], 3600);
    EXPECT_NE(m.cellMv[0], applied.cellMv[0]) << "the sample's converter is off";
    for (int cell = 0; cell < 4; ++cell) {
      EXPECT_EQ(gauge->ReadWord(static_cast<std::uint8_t>(0x3F - cell)), m.cellMv[cell]);
      EXPECT_EQ(gauge->ReadWord(static_cast<std::uint8_t>(0x3B - cell)), m.cellMv[cell]);
    }
    const auto sensor = family == Family::Keld ? Measurements::kTS2 : Measurements::kTS1;
    EXPECT_EQ(gauge->ReadWord(0x08), m.temperatures[sensor]);
    EXPECT_EQ(static_cast<std::int16_t>(*gauge->ReadWord(0x0A)), m.currentMa);
    EXPECT_LT(m.currentMa, 0);

    const bool sbs = family == Family::Keld || family == Family::KeldPlus;
    EXPECT_EQ(gauge->ReadWord(90), sbs ? std::optional<std::uint16_t>(m.packMv) : std::nullopt);
    EXPECT_EQ(gauge->ReadWord(72).has_value(), sbs);
    // On QUILL the answer comes back on ManufacturerAccess after the word, until the next one.
    const std::pair<std::uint16_t, std::uint16_t> macWords[] = {
        {90, m.packMv},
        {72, m.temperatures[Measurements::kTS1]},
        {73, m.temperatures[Measurements::kTS2]}};
    for (const auto& [word, value] : macWords) {
      EXPECT_TRUE(gauge->WriteWord(kAccess, word));
      EXPECT_EQ(gauge->ReadWord(kAccess), family == Family::Quill ? value : word) << word;
      if (sbs) {
        EXPECT_EQ(gauge->ReadWord(static_cast<std::uint8_t>(word)), value) << word;
      }
    }
    EXPECT_TRUE(gauge->WriteWord(kAccess, 0x0054));
    EXPECT_EQ(gauge->ReadWord(kAccess), 0x0054);
  }
}

}  // namespace
}  // namespace ombrelay::sim
