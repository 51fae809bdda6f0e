#include "sim/sample_gauges.h"

#include <cstddef>
#include <initializer_list>
#include <vector>

#include "sim/keld_dataflash.h"
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

// The two calibration rows of MORLIN and KELD_PLUS: cell scales, pack and battery gains, current
// and capacity gains as gauge floats (0.9375 and 281600), current offset, offset samples, board
// offset, five temperature offsets; the second row carries bytes the program must leave alone.
Bytes CalibrationRows(std::initializer_list<std::int32_t> cellScales, std::int32_t packGain,
                      std::int32_t batteryGain) {
  Bytes rows;
  Append(rows, cellScales);
  Append(rows, {packGain, batteryGain});
  AppendBytes(rows, {0x80, 0x70, 0x00, 0x00, 0x93, 0x09, 0x80, 0x00});
  Append(rows, {-7190, 64, 3});
  AppendBytes(rows, {2, -1, 1, 0, 0, 0});
  for (std::uint8_t i = 0; i < 32; ++i)
    rows.push_back(static_cast<std::uint8_t>(0xA0 + i));
  return rows;
}

// KELD's calibration block: sense resistor gain 1.0625 and coulomb counter delta 2.5 as gauge
// floats, CC offset, three temperature offsets, board offset, offset samples, pack gain, the
// alternative cell scales.
Bytes KeldCalibrationBlock() {
  Bytes block;
  AppendBytes(block, {0x81, 0x08, 0x00, 0x00, 0x82, 0x20, 0x00, 0x00});
  Append(block, {-6990});
  AppendBytes(block, {0, 1, -2, 0});
  Append(block, {5, 64});
  AppendBytes(block, {0});
  Append(block, {22070, 20490, 20486, 20495, 20481});
  block.resize(KeldDataflash::kCalibrationLength, 0);
  return block;
}

// QUILL's calibration subclass: sense resistor gain 1.125 and coulomb counter delta 2.5 as gauge
// floats, the VCell scales, AFE pack gain, CC offset, board offset, five temperature offsets.
Bytes QuillCalibrationSubclass() {
  Bytes subclass;
  AppendBytes(subclass, {0x81, 0x10, 0x00, 0x00, 0x82, 0x20, 0x00, 0x00});
  Append(subclass, {20480, 20471, 20489, 20477});
  AppendBytes(subclass, {0});
  Append(subclass, {35, -7730, -4});
  AppendBytes(subclass, {1, 2, -1, 0, 0});
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
              {{KeldDataflash::kCalibrationAddress, KeldCalibrationBlock()},
               {KeldDataflash::kPackConfigurationAddress, {0x2B, 0x41}}}};
    case Family::Quill:
      // Registers byte 0 is 0x02: 3 cells.
      return {{0x5120, 0x03, 0x01, 0x0101, 4, IdentificationForm::ShortTypeInByte9},
              1,
              PackOf({3725, 3798, 3880, 0}, -505),
              {{QuillSubclasses::kCalibration.address, QuillCalibrationSubclass()},
               {QuillSubclasses::kRegisters.address, {0x02, 0x29, 0x08, 0x48, 0x00, 0x50, 0, 0}}}};
    case Family::Morlin:
      // Operation Cfg A at 320 is 0x0F22: its second byte gives 3 cells, its first would give 4.
      return {
          {0x4D31, 0x02, 0x05, 0x0020, 1, IdentificationForm::Short},
          1,
          PackOf({3712, 3805, 3890, 0}, -512),
          {{0, CalibrationRows({20480, 20492, 20475, 20488}, 41020, 44080)}, {320, {0x0F, 0x22}}}};
    case Family::KeldPlus:
      // Operation Cfg A at 448 is 0x2729: its first byte gives 4 cells, its second would give 2.
      return {
          {0x4B60, 0x01, 0x10, 0x0003, 0x0005, IdentificationForm::Long},
          2,
          PackOf({3730, 3822, 3915, 3987}, -520),
          {{0, CalibrationRows({20470, 20484, 20497, 20479}, 40980, 44120)}, {448, {0x27, 0x29}}}};
  }
  return {};
}

}  // namespace

std::unique_ptr<Gauge> MakeSampleGauge(Family family, Clock& clock) {
  const Sample sample = SampleOf(family);
  auto gauge = std::make_unique<Gauge>(family, sample.identity, clock);
  gauge->SetIdentificationRequestErrors(sample.requestErrors);
  gauge->ApplyMeasurements(sample.measurements);
  for (const Contents& contents : sample.dataflash)
    gauge->SetDataflashBytes(contents.address, contents.bytes);
  gauge->SetSecurityMode(SecurityMode::Unsealed);
  return gauge;
}

}  // namespace ombrelay::sim
