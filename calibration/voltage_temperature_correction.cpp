#include "calibration/voltage_temperature_correction.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>

#include "calibration/calibration_patch.h"
#include "gauge/calibration_dataflash.h"
#include "gauge/calibration_layout.h"
#include "gauge/measurement_reads.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr std::size_t kTemperatureBlock = 1;
constexpr std::size_t kRawBlock = 2;
constexpr std::size_t kRawCell1 = 3;
constexpr std::size_t kRawBattery = 11;
constexpr std::size_t kSensors = 5;
constexpr std::int16_t kBatteryGainField = 5;
constexpr std::int32_t kSbsTemperature = 0x08;
constexpr double kScaleUnit = 65536.0;
constexpr double kLargestWord = 65535.0;

constexpr const char* kGeneralError =
    "Error during Voltage and Temperature Calibration. Calibration not performed.";

// Where each record keeps the scales of cells 1 to 4.
constexpr std::array<std::int16_t, kCalParameterRecords> kFirstCellScaleField = {0, 8, 2};

// Where a sensor's measured temperature comes from.
enum class Measured {
  BlockValue,  // block 1, as entering calibration mode read it
  Entered,     // what the panel showed
  LiveSbs,     // the gauge's SBS Temperature, read here
};

struct SensorTarget {
  std::int16_t record;
  std::int16_t field;
  Measured measured;
  // The entry of the known temperatures the offset is worked out from.
  std::size_t actualFrom;
};

using SensorTargets = std::array<std::optional<SensorTarget>, kSensors>;

// Internal, TS1 to TS4. A sensor with no place of its own in the family's layout is left
// uncalibrated: KELD's and QUILL's third and fourth sensor, and every sensor of those two
// families under the second dataflash map, whose layout does not settle where they would go.
SensorTargets TargetsOfFamily() {
  if (g_bUseDataflashMap2 && (g_iDFType == KELD || g_iDFType == QUILL)) return {};
  switch (g_iDFType) {
    case MORLIN:
      return {SensorTarget{0, 11, Measured::BlockValue, 0},
              SensorTarget{0, 12, Measured::BlockValue, 1},
              SensorTarget{0, 13, Measured::BlockValue, 2},
              SensorTarget{0, 14, Measured::BlockValue, 3},
              SensorTarget{0, 15, Measured::BlockValue, 4}};
    case KELD_PLUS:
      // Entering calibration mode does not refresh block 1 on this kind, so TS3 too goes by
      // what the panel showed.
      return {SensorTarget{0, 11, Measured::Entered, 0}, SensorTarget{0, 12, Measured::Entered, 1},
              SensorTarget{0, 13, Measured::Entered, 2}, SensorTarget{0, 14, Measured::Entered, 3},
              std::nullopt};
    case KELD:
      // TS2 goes by TS1's known temperature against the gauge's own reading.
      return {std::nullopt, SensorTarget{1, 4, Measured::Entered, 1},
              SensorTarget{1, 5, Measured::LiveSbs, 1}, std::nullopt, std::nullopt};
    case QUILL:
      return {std::nullopt, SensorTarget{2, 10, Measured::Entered, 1},
              SensorTarget{2, 11, Measured::Entered, 2}, std::nullopt, std::nullopt};
    default:
      return {};
  }
}

// Internal, TS1 to TS4; TS2 on MORLIN and KELD_PLUS has its own words.
constexpr std::array<const char*, kSensors> kSensorMessages = {
    "Temperature Correction beyond allowed range for Internal Temperature Calibration.  Allowed "
    "range approximately plus or minus 12.7 deg K from default value of 0. No calibration data "
    "written.",
    "Temperature Correction beyond allowed range for External Temperature Sensor 1.  Allowed "
    "range approximately plus or minus 12.7 deg K from default value. No calibration data "
    "written.",
    "Temperature Correction beyond allowed range for External Temperature Sensor 2.  Allowed "
    "range is approximately plus or minus 12.7 deg K from default value. No calibration data "
    "written.",
    "Temperature Correction beyond allowed range for External Temperature Sensor 3.  Allowed "
    "range is approximately plus or minus 12.7 deg K from default value. No calibration data "
    "written.",
    "Temperature Correction beyond allowed range for External Temperature Sensor 4.  Allowed "
    "range is approximately plus or minus 12.7 deg K from default value. No calibration data "
    "written."};
constexpr const char* kRowStyleTs2Message =
    "Temperature Correction beyond allowed range for External Temperature Sensor 2.  Allowed "
    "range approximately plus or minus 12 deg K. Please correct value. No calibration data "
    "written.";

const char* SensorMessage(std::size_t sensor) {
  if (sensor == 2 && (g_iDFType == MORLIN || g_iDFType == KELD_PLUS)) return kRowStyleTs2Message;
  return kSensorMessages[sensor];
}

double BlockValue(std::size_t block, std::size_t field) {
  return TextToDouble(g_atMODBlocks[block].atFields[field].sValue);
}

double RawCell(int cell) {
  return BlockValue(kRawBlock, kRawCell1 + static_cast<std::size_t>(cell));
}

// Cell scales from the stack voltages over the summed raw readings of the cells below; 1 after
// the cell's message when a scale is beyond the word.
Status CalibrateCells(const VoltageCalInputs& voltages) {
  const std::int16_t record = CalBlockIndex();
  const int cells = voltages.iCellCount > 3 ? 4 : (voltages.iCellCount > 2 ? 3 : 2);
  double rawSum = 0.0;
  for (int cell = 0; cell < cells; ++cell) {
    rawSum += RawCell(cell);
    const double scale = RoundHalfEven(
        Divide(voltages.aiCellVoltage[static_cast<std::size_t>(cell)], rawSum) * kScaleUnit);
    if (scale > kLargestWord) {
      MsgBox("Correction for Cell Voltage " + std::to_string(cell + 1) +
             " is beyond allowed range. Calibration not performed.");
      return 1;
    }
    // The scale is a signed word in dataflash: 32768 and above overflow here.
    std::uint8_t high = 0;
    std::uint8_t low = 0;
    SplitWordtoBytes(ToInt16(scale), high, low);
    const auto field =
        static_cast<std::int16_t>(kFirstCellScaleField.at(static_cast<std::size_t>(record)) + cell);
    PatchCalWord(CalField(record, field), high, low);
  }
  return 0;
}

// The battery gain takes the whole unsigned word.
Status CalibrateBatteryGain(const VoltageCalInputs& voltages) {
  const double gain = RoundHalfEven(
      Divide(RoundHalfEven(voltages.dBatteryVoltage), BlockValue(kRawBlock, kRawBattery)) *
      kScaleUnit);
  if (gain > kLargestWord) {
    MsgBox("Battery Voltage Correction is beyond allowed value. Calibration not performed.");
    return 1;
  }
  const std::uint8_t high = ToByte(std::floor(gain / 256.0));
  const std::uint8_t low = ToByte(gain - high * 256.0);
  PatchCalWord(CalField(0, kBatteryGainField), high, low);
  return 0;
}

Status CalibrateTemperatures(const TemperatureCalInputs& temperatures, double sbsTemperature) {
  const SensorTargets targets = TargetsOfFamily();
  for (std::size_t index = 0; index < kSensors; ++index) {
    if (temperatures.adActual[index] == NoSensorValue || !targets[index]) continue;
    const SensorTarget& target = *targets[index];
    double measured = sbsTemperature;
    if (target.measured == Measured::BlockValue) {
      measured = BlockValue(kTemperatureBlock, index);
    } else if (target.measured == Measured::Entered) {
      measured = temperatures.adMeasured[index];
    }
    const MODField& field = CalField(target.record, target.field);
    std::uint8_t offset = 0;
    if (ComputeTempOffset(temperatures.adActual[target.actualFrom], measured,
                          TextToDouble(field.sValue), offset) != 0) {
      MsgBox(SensorMessage(index));
      return 1;
    }
    PatchCalByte(field, offset);
  }
  return 0;
}

Status Calibrate(bool bVoltage, bool bTemperature, const VoltageCalInputs& voltages,
                 const TemperatureCalInputs& temperatures) {
  if (RawCell(0) == 0.0 || RawCell(1) == 0.0) {
    MsgBox("Raw calibration value of zero in voltage rows.");
    return 1;
  }

  if (bVoltage) {
    if (CalibrateCells(voltages) != 0) return 1;
    if ((g_iDFType == MORLIN || g_iDFType == KELD_PLUS) && g_bBatteryVSupported &&
        CalibrateBatteryGain(voltages) != 0) {
      return 1;
    }
  }

  // KELD reads its live temperature whichever parts were asked for.
  double sbsTemperature = 0.0;
  if (g_iDFType == KELD) {
    const std::optional<std::int16_t> word = ReadSignedWord(kSbsTemperature);
    if (!word) {
      MsgBox(
          "Unable to read current SBS Temperature from device. Temperature calibration not "
          "completed. Please retry.");
      return 1;
    }
    sbsTemperature = (*word - kZeroCelsiusTenths) * 0.1;
  }

  if (bTemperature && CalibrateTemperatures(temperatures, sbsTemperature) != 0) return 1;

  if (WriteCalDataflash() != 0) {
    MsgBox(
        "Unable to write new calibration values to Dataflash. Ensure device is not sealed. Please "
        "repeat this calibration.");
    return 1;
  }
  return 0;
}

}  // namespace

Status CalibrateVoltageandTemperature(bool bVoltage, bool bTemperature,
                                      const VoltageCalInputs& voltages,
                                      const TemperatureCalInputs& temperatures) {
  try {
    return Calibrate(bVoltage, bTemperature, voltages, temperatures);
  } catch (const RuntimeError&) {
    MsgBox(kGeneralError);
    return 1;
  }
}

Status ComputeTempOffset(double actual, double measured, double current, std::uint8_t& out) {
  const std::int16_t value = ToInt16((actual - measured) * 10.0 + current);
  if (value > 127 || value < -128) return 1;
  out = static_cast<std::uint8_t>(value >= 0 ? value : 256 + value);
  return 0;
}

}  // namespace ombrelay
