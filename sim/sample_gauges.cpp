#include "sim/sample_gauges.h"

#include <cstddef>
#include <initializer_list>
#include <vector>

#include "sim/dataflash_rows.h"
#include "sim/keld_dataflash.h"
#include "sim/pack_configuration.h"
#include "sim/quill_subclasses.h"

namespace ombrelay::sim {
namespace {

// Bytes to place in the dataflash at an address.
struct Contents {
  std::size_t address;
  Bytes bytes;
};

struct Sample {
  Identity identity;
  // Each sample leaves some errors after its identification request, so that the program's
  // settling of the bus has work to do.
  int requestErrors;
  Measurements measurements;
  ConverterErrors converter;
  std::vector<Contents> dataflash;
};

// Dataflash keeps numbers high byte first.
void Append(Bytes& bytes, std::initializer_list<std::int32_t> words) {
  for (const std::int32_t word : words) {
    bytes.push_back(static_cast<std::uint8_t>((word >> 8) & 0xFF));
    bytes.push_back(static_cast<std::uint8_t>(word & 0xFF));
  }
}
void AppendBytes(Bytes& bytes, std::initializer_list<std::int32_t> values) {
  for (const std::int32_t value : values)
    bytes.push_back(static_cast<std::uint8_t>(value & 0xFF));
}

Measurements PackOf(std::array<std::uint16_t, 4> cells, std::int16_t currentMa) {
  Measurements measurements;
  measurements.cellMv = cells;
  measurements.batteryMv = static_cast<std::uint16_t>(cells[0] + cells[1] + cells[2] + cells[3]);
  measurements.packMv = static_cast<std::uint16_t>(measurements.batteryMv - 14);
  measurements.temperatures = {2985, 2981, 2983, 2980, 2979, 2982, 2990};
  measurements.currentMa = currentMa;
  return measurements;
}

// A sense resistor a few percent off its nominal value, and coulomb counter and board offsets
// that the sample's stored offsets do not quite match.
struct CurrentSide {
  double senseResistorError;
  std::int16_t coulombCounterOffset;
  std::int16_t boardOffset;
};

// A converter off by a few percent and a few counts on each voltage, and by a degree or two on
// each sensor; the calibration data of the samples is nominal, so their reports are visibly off
// until a calibration.
ConverterErrors ConverterOf(std::array<double, 4> cellGain, std::array<std::int16_t, 4> cellOffset,
                            double batteryGain, double packGain,
                            std::array<std::int16_t, 5> sensors, CurrentSide current) {
  ConverterErrors errors;
  errors.cellGain = cellGain;
  errors.cellOffset = cellOffset;
  errors.batteryGain = batteryGain;
  errors.packGain = packGain;
  for (std::size_t sensor = 0; sensor < sensors.size(); ++sensor)
    errors.temperature[sensor] = sensors[sensor];
  errors.senseResistorError = current.senseResistorError;
  errors.coulombCounterOffset = current.coulombCounterOffset;
  errors.boardOffset = current.boardOffset;
  return errors;
}

// The two calibration rows of MORLIN and KELD_PLUS: nominal cell scales, pack and battery gains,
// current and capacity gains as gauge floats (0.9375 and 281600), current offset, offset
// samples, board offset, five temperature offsets of 0; the second row carries bytes the
// program must leave alone.
Bytes CalibrationRows() {
  Bytes rows;
  Append(rows, {kNominalScale, kNominalScale, kNominalScale, kNominalScale});
  Append(rows, {kNominalScale, kNominalScale});
  AppendBytes(rows, {0x80, 0x70, 0x00, 0x00, 0x93, 0x09, 0x80, 0x00});
  Append(rows, {-7190, 64, 3});
  AppendBytes(rows, {0, 0, 0, 0, 0, 0});
  for (std::uint8_t i = 0; i < 32; ++i)
    rows.push_back(static_cast<std::uint8_t>(0xA0 + i));
  return rows;
}

// KELD's calibration block: sense resistor gain 1.0625 and coulomb counter delta 2.5 as gauge
// floats, CC offset, three temperature offsets of 0, board offset, offset samples, nominal pack
// gain and alternative cell scales.
Bytes KeldCalibrationBlock() {
  Bytes block;
  AppendBytes(block, {0x81, 0x08, 0x00, 0x00, 0x82, 0x20, 0x00, 0x00});
  Append(block, {-6990});
  AppendBytes(block, {0, 0, 0, 0});
  Append(block, {5, 64});
  AppendBytes(block, {0});
  Append(block, {kNominalScale, kNominalScale, kNominalScale, kNominalScale, kNominalScale});
  block.resize(KeldDataflash::kCalibrationLength, 0);
  return block;
}

// QUILL's calibration subclass: sense resistor gain 1.125 and coulomb counter delta 2.5 as gauge
// floats, nominal VCell scales and AFE pack gain, CC offset, board offset, five temperature
// offsets of 0.
Bytes QuillCalibrationSubclass() {
  Bytes subclass;
  AppendBytes(subclass, {0x81, 0x10, 0x00, 0x00, 0x82, 0x20, 0x00, 0x00});
  Append(subclass, {kNominalScale, kNominalScale, kNominalScale, kNominalScale});
  AppendBytes(subclass, {0});
  Append(subclass, {kNominalScale, -7730, -4});
  AppendBytes(subclass, {0, 0, 0, 0, 0});
  subclass.resize(QuillSubclasses::kCalibration.length, 0);
  return subclass;
}

Sample SampleOf(Family family) {
  switch (family) {
    case Family::Keld:
      // Pack configuration 0x2B41: high byte 0x2B, 4 cells.
      return {{0x0B12, 0x01, 0x07, 0x0012, 2, IdentificationForm::Short},
              2,
              PackOf({3702, 3811, 3897, 3954}, -498),
              ConverterOf({0.021, -0.016, 0.012, -0.024}, {4, -3, 2, -5}, 0.0, 0.019,
                          {11, -17, 22, 0, 0}, {0.028, -131, 8}),
              {{KeldDataflash::kCalibrationAddress, KeldCalibrationBlock()},
               {KeldDataflash::kPackConfigurationAddress, {0x2B, 0x41}}}};
    case Family::Quill:
      // Registers byte 0 is 0x02: 3 cells.
      return {{0x5120, 0x03, 0x01, 0x0101, 4, IdentificationForm::ShortTypeInByte9},
              1,
              PackOf({3725, 3798, 3880, 0}, -505),
              ConverterOf({-0.022, 0.017, 0.026, 0.0}, {-2, 5, -4, 0}, 0.0, -0.021,
                          {-13, 18, -24, 7, -9}, {-0.034, -104, -6}),
              {{QuillSubclasses::kCalibration.address, QuillCalibrationSubclass()},
               {QuillSubclasses::kRegisters.address, {0x02, 0x29, 0x08, 0x48, 0x00, 0x50, 0, 0}}}};
    case Family::Morlin:
      // Operation Cfg A at 320 is 0x0F2A: its second byte gives 3 cells, its first would give 4,
      // and bit 3 of the second has the Temperature word report TS1.
      return {{0x4D31, 0x02, 0x05, 0x0020, 1, IdentificationForm::Short},
              1,
              PackOf({3712, 3805, 3890, 0}, -512),
              ConverterOf({0.025, -0.018, 0.014, 0.0}, {3, -4, 6, 0}, 0.017, -0.022,
                          {15, -20, 12, -8, 5}, {0.041, -118, -7}),
              {{DataflashRows::kCalibrationAddress, CalibrationRows()},
               {PackConfiguration::kMorlinSystemConfigurationAddress, {0x0F, 0x2A}}}};
    case Family::KeldPlus:
      // Operation Cfg A at 448 is 0x2729: its first byte gives 4 cells, its second would give 2.
      return {{0x4B60, 0x01, 0x10, 0x0003, 0x0005, IdentificationForm::Long},
              2,
              PackOf({3730, 3822, 3915, 3987}, -520),
              ConverterOf({-0.019, 0.023, -0.012, 0.015}, {-3, 2, 5, -4}, -0.024, 0.016,
                          {-16, 14, -21, -6, 10}, {-0.023, -64, 11}),
              {{DataflashRows::kCalibrationAddress, CalibrationRows()},
               {PackConfiguration::kKeldPlusSystemConfigurationAddress, {0x27, 0x29}}}};
  }
  return {};
}

}  // namespace

std::unique_ptr<Gauge> MakeSampleGauge(Family family, Clock& clock) {
  const Sample sample = SampleOf(family);
  auto gauge = std::make_unique<Gauge>(family, sample.identity, clock);
  gauge->SetIdentificationRequestErrors(sample.requestErrors);
  gauge->ApplyMeasurements(sample.measurements);
  gauge->SetConverterErrors(sample.converter);
  for (const Contents& contents : sample.dataflash)
    gauge->SetDataflashBytes(contents.address, contents.bytes);
  gauge->SetSecurityMode(SecurityMode::Unsealed);
  return gauge;
}

}  // namespace ombrelay::sim
