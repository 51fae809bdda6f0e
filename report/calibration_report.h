#pragma once
// The record of one calibration, as a production line files it for the pack: the gauge and how
// it was configured, what was entered, what the panel showed before and after, the boxes shown,
// and every dataflash byte the calibration changed with what the gauge read back.

#include <cstdint>
#include <ctime>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "report/dataflash_changes.h"
#include "report/shown_message.h"

namespace ombrelay {

struct ReportedValue {
  std::string control;  // "txtCalMeasVoltage(0)"
  std::string label;    // "Cell 1, measured (mV)"
  std::string text;
};

struct CalibrationReport {
  std::string calibration;  // "Voltage and temperature calibration"
  std::time_t time = 0;     // when its button was pressed
  // The gauge as start-up identified it, and its configuration.
  std::string device;
  std::string firmware;
  std::string firmwareType;
  std::string build;
  std::int32_t address = 0;
  std::string family;
  std::vector<std::string> sections;
  std::string dataflashMap;
  std::vector<ReportedValue> entered;
  std::vector<ReportedValue> shownBefore;
  std::vector<ReportedValue> shownAfter;
  bool done = false;  // its done-mark showed
  std::vector<ShownMessage> messages;
  std::vector<ChangedByte> changes;
};

// The gauge's identity and configuration, as start-up left them in the shared state.
void TakeIdentity(CalibrationReport& report);

// The dataflash areas of the configured family.
DataflashAreas ConfiguredAreas();

// Names each byte by the calibration parameter of the configured family that holds it: the
// calibration data is read and written whole, row 0 then row 1, the KELD block or the QUILL
// subclass, so a byte's address is its place in that data.
void NameCalibrationParameters(std::vector<ChangedByte>& changes);

// The time as local ISO 8601 with its offset from UTC, "2026-11-24T01:40:12+0100".
std::string LocalTime(std::time_t time);

nlohmann::ordered_json ToJson(const CalibrationReport& report);

}  // namespace ombrelay
