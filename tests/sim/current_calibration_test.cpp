#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <ios>
#include <string>
#include <utility>

#include "calibration/calibration_tables.h"
#include "gauge/value_conversion.h"
#include "shell/shared_state.h"
#include "sim/calibration_data.h"
#include "sim/gauge.h"
#include "sim/gauge_float.h"
#include "sim/sample_gauges.h"

namespace ombrelay::sim {
namespace {

// Families that keep no count of offset samples take the firmware's own.
constexpr int kFirmwareSamples = 64;

std::array<std::uint8_t, 4> BytesOf(std::uint32_t word) {
  return {static_cast<std::uint8_t>(word >> 24), static_cast<std::uint8_t>(word >> 16 & 0xFF),
          static_cast<std::uint8_t>(word >> 8 & 0xFF), static_cast<std::uint8_t>(word & 0xFF)};
}

// The program's encoding of value.
std::array<std::uint8_t, 4> Encoded(double value) {
  return BytesOf(static_cast<std::uint32_t>(std::stoul(DoubletoGaugeFloat(value), nullptr, 16)));
}

TEST(GaugeFloat, DecodesTheSamplesFloatsAndWhatTheProgramWrites) {
  // The samples' factory gains and capacity gain, a negative value and one below a half.
  const std::pair<std::uint32_t, double> known[] = {
      {0x80700000, 0.9375}, {0x81080000, 1.0625}, {0x81100000, 1.125}, {0x82200000, 2.5},
      {0x93098000, 281600}, {0x81C00000, -1.5},   {0x7F000000, 0.25}};
  for (const auto& [word, value] : known)
    EXPECT_EQ(DecodeGaugeFloat(BytesOf(word)), value) << std::hex << word;
  for (const double value : {0.9419, 280932.625, -1941.07, 0.00001})
    EXPECT_NEAR(DecodeGaugeFloat(Encoded(value)), value, std::abs(value) * 1e-7);
}

// Where the program's table puts each current field; every family's calibration area starts at
// dataflash address 0. Board Offset has that name in every record.
struct CurrentFields {
  Family family;
  std::size_t record;
  const char* gain;
  const char* coulombCounterOffset;
  const char* samples;  // none where the family keeps no count
};
constexpr CurrentFields kFamilies[] = {
    {Family::Morlin, 0, "CC Gain", "Current Offset", "CC Offset Samples"},
    {Family::KeldPlus, 0, "CC Gain", "Current Offset", "CC Offset Samples"},
    {Family::Keld, 1, "Sense Resistor Gain", "CC Offset", "CC Offset Samples"},
    {Family::Quill, 2, "Sense Resistor Gain", "CC Offset", nullptr}};

std::size_t Offset(std::size_t record, const std::string& name) {
  CalInit();
  const MODBlock fields = g_atCalParameters.at(record);
  ResetSharedState();
  for (const MODField& field : fields.atFields)
    if (field.sName == name) return std::stoul(field.sOffset);
  ADD_FAILURE() << name << " is not in record " << record;
  return 0;
}

std::int16_t StoredWord(const Gauge& gauge, std::size_t address) {
  const Bytes bytes = gauge.DataflashBytes(address, 2);
  return static_cast<std::int16_t>(bytes[0] << 8 | bytes[1]);
}

double StoredFloat(const Gauge& gauge, std::size_t address) {
  const Bytes bytes = gauge.DataflashBytes(address, 4);
  return GaugeFloattoDouble(bytes[0], bytes[1], bytes[2], bytes[3]);
}

// The samples' stored values differ from one another, so a field read from the wrong bytes shows.
TEST(CurrentCalibration, GaugeReadsEachFieldWhereTheProgramsTablePutsIt) {
  VirtualClock clock;
  const SecurityMode unsealed = SecurityMode::Unsealed;
  for (const CurrentFields& fields : kFamilies) {
    SCOPED_TRACE(FamilyName(fields.family));
    const auto gauge = MakeSampleGauge(fields.family, clock);
    Dataflash dataflash(unsealed);
    dataflash.Poke(0, gauge->DataflashBytes(0, Dataflash::kSize));
    const CalibrationData data = ReadCalibrationData(fields.family, dataflash);
    EXPECT_EQ(data.currentGain, StoredFloat(*gauge, Offset(fields.record, fields.gain)));
    EXPECT_EQ(data.currentGain, data.nominalCurrentGain) << "the factory gain";
    EXPECT_EQ(data.coulombCounterOffset,
              StoredWord(*gauge, Offset(fields.record, fields.coulombCounterOffset)));
    EXPECT_EQ(data.boardOffset, StoredWord(*gauge, Offset(fields.record, "Board Offset")));
    EXPECT_EQ(data.offsetSamples, fields.samples
                                      ? StoredWord(*gauge, Offset(fields.record, fields.samples))
                                      : kFirmwareSamples);
  }
}

}  // namespace
}  // namespace ombrelay::sim
