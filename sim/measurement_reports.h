#pragma once
// How the gauge reports what it measures: the Smart Battery words of cell voltages, temperature
// and current, the words some families answer for pack voltage and the two external sensors,
// and the voltage and temperature blocks of the manufacturer data. Every report goes from the
// applied values through the converter and the calibration data in dataflash.

#include <cstdint>
#include <functional>

#include "sim/command_set.h"
#include "sim/converter.h"
#include "sim/dataflash.h"
#include "sim/family.h"
#include "sim/manufacturer_access.h"
#include "sim/measurements.h"

namespace ombrelay::sim {

class MeasurementReports {
 public:
  // The sensor it reports depends on the family and, on MORLIN, on System Configuration.
  static constexpr std::uint8_t kTemperature = 0x08;
  static constexpr std::uint8_t kCurrent = 0x0A;
  // Cells 1 to 4 on 0x3F down to 0x3C, and again on the alternative 0x3B down to 0x38.
  static constexpr std::uint8_t kCellVoltage1 = 0x3F;
  static constexpr std::uint8_t kAltCellVoltage1 = 0x3B;
  // Pack voltage and sensors 1 and 2: Smart Battery words on KELD and KELD_PLUS, ManufacturerAccess
  // words answered on ManufacturerAccess itself on QUILL; MORLIN has neither.
  static constexpr std::uint8_t kPackVoltage = 90;
  static constexpr std::uint8_t kTS1Temperature = 72;
  static constexpr std::uint8_t kTS2Temperature = 73;

  // Installs the words this family answers.
  MeasurementReports(Family family, CommandSet& commands, ManufacturerAccess& access,
                     const Dataflash& dataflash);
  MeasurementReports(const MeasurementReports&) = delete;
  MeasurementReports& operator=(const MeasurementReports&) = delete;

  void Apply(const Measurements& measurements) { applied_ = measurements; }
  const Measurements& Applied() const { return applied_; }
  void SetConverterErrors(const ConverterErrors& errors) { errors_ = errors; }
  const ConverterErrors& GetConverterErrors() const { return errors_; }

  // The converter's counts of the applied values.
  RawReadings Raw() const { return Convert(applied_, errors_); }
  // What the gauge reports of the applied values, through the calibration data as the
  // dataflash holds it now.
  Measurements Reported() const;

  // The manufacturer data blocks, low byte first: cells 1 to 4, battery and pack in mV; the
  // seven temperatures in tenths of a kelvin.
  Bytes VoltagesBlock() const;
  Bytes TemperaturesBlock() const;

 private:
  using Selector = std::function<std::uint16_t(const Measurements&)>;
  // A word read of command answers the selected reported value.
  void AnswerWord(CommandSet& commands, std::uint8_t command, Selector select);

  Family family_;
  const Dataflash& dataflash_;
  Measurements applied_;
  ConverterErrors errors_;
};

}  // namespace ombrelay::sim
