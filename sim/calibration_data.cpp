#include "sim/calibration_data.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "sim/dataflash_rows.h"
#include "sim/gauge_float.h"
#include "sim/keld_dataflash.h"
#include "sim/quill_subclasses.h"

namespace ombrelay::sim {
namespace {

struct Word {
  std::size_t offset;
  bool isSigned;
};

// Offsets from the start of the family's calibration area.
struct Layout {
  std::size_t base;
  std::array<Word, 4> cellScale;
  std::optional<Word> batteryGain;
  Word packGain;
  std::array<std::optional<std::size_t>, 5> temperatureOffset;
  std::size_t currentGain;  // a gauge float
  Word coulombCounterOffset;
  Word boardOffset;
  std::optional<Word> offsetSamples;
};

constexpr std::int32_t kFirmwareOffsetSamples = 64;

Layout LayoutOf(Family family) {
  switch (family) {
    case Family::Keld:
      return {KeldDataflash::kCalibrationAddress,
              {{{21, false}, {23, false}, {25, false}, {27, false}}},
              std::nullopt,
              {19, false},
              {11, 12, 13, std::nullopt, std::nullopt},
              0,
              {8, true},
              {14, true},
              Word{16, true}};
    case Family::Quill:
      return {QuillSubclasses::kCalibration.address,
              {{{8, false}, {10, false}, {12, false}, {14, false}}},
              std::nullopt,
              {17, true},
              {23, 24, 25, 26, 27},
              0,
              {19, true},
              {21, true},
              std::nullopt};
    case Family::Morlin:
    case Family::KeldPlus:
      break;
  }
  return {DataflashRows::kCalibrationAddress,
          {{{0, true}, {2, true}, {4, true}, {6, true}}},
          Word{10, false},
          {8, false},
          {26, 27, 28, 29, 30},
          12,
          {20, true},
          {24, true},
          Word{22, true}};
}

// The stored current gain each family's firmware counts one mA per count at.
double NominalCurrentGain(Family family) {
  switch (family) {
    case Family::Keld:
      return 1.0625;
    case Family::Quill:
      return 1.125;
    case Family::Morlin:
    case Family::KeldPlus:
      break;
  }
  return 0.9375;
}

std::int32_t ReadWord(const Dataflash& dataflash, std::size_t base, Word word) {
  const Bytes bytes = dataflash.Peek(base + word.offset, 2);
  const auto value = static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
  return word.isSigned ? std::int32_t{static_cast<std::int16_t>(value)} : std::int32_t{value};
}

std::uint16_t ClampedWord(double value) {
  return static_cast<std::uint16_t>(std::clamp(std::round(value), 0.0, 65535.0));
}

std::int16_t ClampedSignedWord(double value) {
  return static_cast<std::int16_t>(std::clamp(std::round(value), -32768.0, 32767.0));
}

std::int16_t CalibratedCurrent(std::int16_t raw, const CalibrationData& calibration) {
  const double samples = std::max(calibration.offsetSamples, 1);
  const double offset = (calibration.coulombCounterOffset + calibration.boardOffset) / samples;
  return ClampedSignedWord((raw - offset) * calibration.currentGain /
                           calibration.nominalCurrentGain);
}

std::int64_t Scaled(std::int64_t raw, std::int32_t scale) {
  return std::llround(static_cast<double>(raw) * scale / 65536.0);
}

}  // namespace

CalibrationData ReadCalibrationData(Family family, const Dataflash& dataflash) {
  const Layout layout = LayoutOf(family);
  CalibrationData data;
  for (std::size_t cell = 0; cell < data.cellScale.size(); ++cell)
    data.cellScale[cell] = ReadWord(dataflash, layout.base, layout.cellScale[cell]);
  if (layout.batteryGain) data.batteryGain = ReadWord(dataflash, layout.base, *layout.batteryGain);
  data.packGain = ReadWord(dataflash, layout.base, layout.packGain);
  for (std::size_t sensor = 0; sensor < data.temperatureOffset.size(); ++sensor) {
    if (const auto offset = layout.temperatureOffset[sensor]) {
      data.temperatureOffset[sensor] =
          static_cast<std::int8_t>(dataflash.Peek(layout.base + *offset, 1)[0]);
    }
  }
  const Bytes gain = dataflash.Peek(layout.base + layout.currentGain, 4);
  data.currentGain = DecodeGaugeFloat(std::span<const std::uint8_t, 4>(gain.data(), 4));
  data.nominalCurrentGain = NominalCurrentGain(family);
  data.coulombCounterOffset = ReadWord(dataflash, layout.base, layout.coulombCounterOffset);
  data.boardOffset = ReadWord(dataflash, layout.base, layout.boardOffset);
  data.offsetSamples = layout.offsetSamples
                           ? ReadWord(dataflash, layout.base, *layout.offsetSamples)
                           : kFirmwareOffsetSamples;
  return data;
}

Measurements Calibrated(const RawReadings& raw, const CalibrationData& calibration, int cellCount) {
  Measurements reported;
  std::int64_t rawSum = 0;
  std::int64_t lowerStack = 0;
  for (std::size_t cell = 0; cell < reported.cellMv.size(); ++cell) {
    if (static_cast<int>(cell) >= cellCount) break;
    rawSum += raw.cells[cell];
    const std::int64_t stack = Scaled(rawSum, calibration.cellScale[cell]);
    reported.cellMv[cell] = ClampedWord(static_cast<double>(stack - lowerStack));
    lowerStack = stack;
  }
  reported.batteryMv = ClampedWord(
      static_cast<double>(Scaled(raw.battery, calibration.batteryGain.value_or(kNominalScale))));
  reported.packMv = ClampedWord(static_cast<double>(Scaled(raw.pack, calibration.packGain)));
  for (std::size_t sensor = 0; sensor < reported.temperatures.size(); ++sensor) {
    const std::int8_t offset = sensor < calibration.temperatureOffset.size()
                                   ? calibration.temperatureOffset[sensor].value_or(0)
                                   : 0;
    reported.temperatures[sensor] = ClampedWord(raw.temperatures[sensor] + offset);
  }
  reported.currentMa = CalibratedCurrent(raw.coulombCounter, calibration);
  return reported;
}

}  // namespace ombrelay::sim
