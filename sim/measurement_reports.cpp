#include "sim/measurement_reports.h"

#include <utility>

#include "sim/calibration_data.h"
#include "sim/pack_configuration.h"

namespace ombrelay::sim {
namespace {

void AppendLowByteFirst(Bytes& block, std::uint16_t value) {
  block.push_back(static_cast<std::uint8_t>(value & 0xFF));
  block.push_back(static_cast<std::uint8_t>(value >> 8));
}

}  // namespace

MeasurementReports::MeasurementReports(Family family, CommandSet& commands,
                                       ManufacturerAccess& access, const Dataflash& dataflash)
    : family_(family), dataflash_(dataflash) {
  for (std::uint8_t cell = 0; cell < 4; ++cell) {
    const Selector voltage = [cell](const Measurements& m) { return m.cellMv[cell]; };
    AnswerWord(commands, static_cast<std::uint8_t>(kCellVoltage1 - cell), voltage);
    AnswerWord(commands, static_cast<std::uint8_t>(kAltCellVoltage1 - cell), voltage);
  }
  AnswerWord(commands, kTemperature, [this](const Measurements& m) {
    return m.temperatures[TemperatureWordSensor(family_, dataflash_)];
  });
  AnswerWord(commands, kCurrent,
             [](const Measurements& m) { return static_cast<std::uint16_t>(m.currentMa); });

  const std::pair<std::uint8_t, Selector> named[] = {
      {kPackVoltage, [](const Measurements& m) { return m.packMv; }},
      {kTS1Temperature, [](const Measurements& m) { return m.temperatures[Measurements::kTS1]; }},
      {kTS2Temperature, [](const Measurements& m) { return m.temperatures[Measurements::kTS2]; }},
  };
  // No structured binding: clang 14, which builds the fuzzers, cannot capture one.
  for (const auto& entry : named) {
    const std::uint8_t command = entry.first;
    const Selector& select = entry.second;
    switch (family) {
      case Family::Keld:
      case Family::KeldPlus:
        AnswerWord(commands, command, select);
        break;
      case Family::Quill:
        access.On(command, [this, &access, select] { access.AnswerReadsWith(select(Reported())); });
        break;
      case Family::Morlin:
        break;
    }
  }
}

Measurements MeasurementReports::Reported() const {
  return Calibrated(Raw(), ReadCalibrationData(family_, dataflash_),
                    ConfiguredCellCount(family_, dataflash_));
}

void MeasurementReports::AnswerWord(CommandSet& commands, std::uint8_t command, Selector select) {
  commands.OnReadWord(command,
                      [this, select = std::move(select)]() -> std::optional<std::uint16_t> {
                        return select(Reported());
                      });
}

Bytes MeasurementReports::VoltagesBlock() const {
  const Measurements reported = Reported();
  Bytes block;
  for (const std::uint16_t cell : reported.cellMv)
    AppendLowByteFirst(block, cell);
  AppendLowByteFirst(block, reported.batteryMv);
  AppendLowByteFirst(block, reported.packMv);
  return block;
}

Bytes MeasurementReports::TemperaturesBlock() const {
  Bytes block;
  for (const std::uint16_t temperature : Reported().temperatures)
    AppendLowByteFirst(block, temperature);
  return block;
}

}  // namespace ombrelay::sim
