#include "report/calibration_report.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "config/app_directory.h"
#include "config/device_configuration.h"
#include "gauge/calibration_layout.h"
#include "gauge/dataflash_rows.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

using Json = nlohmann::ordered_json;

Json ByteText(std::optional<std::uint8_t> byte) {
  if (!byte) return nullptr;
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "0x%02X", static_cast<unsigned>(*byte));
  return text.data();
}

Json Values(const std::vector<ReportedValue>& values) {
  Json list = Json::array();
  for (const ReportedValue& value : values)
    list.push_back({{"control", value.control}, {"label", value.label}, {"text", value.text}});
  return list;
}

// How many bytes a calibration parameter of this type takes; 0 for a type the calibration data
// does not hold.
std::int32_t Width(const std::string& type) {
  if (type == "U1" || type == "I1") return 1;
  if (type == "U2" || type == "I2") return 2;
  if (type == "F4") return 4;
  return 0;
}

// Where byte i of the calibration data stands in the dataflash the changes address: the row
// families read it from the row the calibration subclass starts in and the one after it.
std::int32_t CalibrationDataStart() {
  return g_iDFType == MORLIN || g_iDFType == KELD_PLUS ? g_iCalSubclassID / kRowLength * kRowLength
                                                       : 0;
}

}  // namespace

void NameCalibrationParameters(std::vector<ChangedByte>& changes) {
  const std::int32_t start = CalibrationDataStart();
  const MODBlock& record = g_atCalParameters.at(static_cast<std::size_t>(CalBlockIndex()));
  const std::int32_t base = CalDataBase();
  const auto lastSlot = std::clamp<std::int32_t>(record.lFieldCount, -1, kMODFieldSlots - 1);
  for (ChangedByte& byte : changes) {
    const std::int32_t index = byte.address - start;
    if (index < 0 || index >= static_cast<std::int32_t>(g_abCalData.size())) continue;
    for (std::int32_t slot = 0; slot <= lastSlot; ++slot) {
      const MODField& field = record.atFields[static_cast<std::size_t>(slot)];
      if (g_bUseDataflashMap2 && !field.bInCalData) continue;
      const std::int32_t first = base + TextToInt16(field.sOffset);
      if (index >= first && index < first + Width(field.sDataType)) {
        byte.parameter = field.sName;
        break;
      }
    }
  }
}

void TakeIdentity(CalibrationReport& report) {
  report.device = g_sDeviceNumber;
  report.firmware = g_sFirmwareVersion;
  report.firmwareType = g_sFirmwareType;
  report.build = g_sBuildNumber;
  report.address = g_iTargetAddress;
  report.family = FamilyName(g_iDFType);
  report.sections = FoundSectionNames(ApplicationDirectory() + "config.ini");
  report.dataflashMap = g_sDataFlashMapPath;
}

DataflashAreas ConfiguredAreas() {
  return {g_iDFType, g_iDFAccessFlashCmd};
}

std::string LocalTime(std::time_t time) {
  std::tm local{};
  localtime_r(&time, &local);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S%z", &local);
  return text.data();
}

Json ToJson(const CalibrationReport& report) {
  Json messages = Json::array();
  for (const ShownMessage& message : report.messages)
    messages.push_back({{"style", message.style == MessageStyle::Error ? "error" : "plain"},
                        {"title", message.title},
                        {"text", message.text}});
  Json changes = Json::array();
  for (const ChangedByte& byte : report.changes)
    changes.push_back({{"parameter", byte.parameter},
                       {"area", byte.area},
                       {"address", byte.address},
                       {"old", ByteText(byte.old)},
                       {"written", ByteText(byte.written)},
                       {"read_back", ByteText(byte.readBack)}});
  return {{"calibration", report.calibration},
          {"time", LocalTime(report.time)},
          {"done", report.done},
          {"gauge",
           {{"device", report.device},
            {"firmware", report.firmware},
            {"firmware_type", report.firmwareType},
            {"build", report.build},
            {"address", report.address}}},
          {"configuration",
           {{"family", report.family},
            {"sections", report.sections},
            {"dataflash_map", report.dataflashMap}}},
          {"entered", Values(report.entered)},
          {"shown_before", Values(report.shownBefore)},
          {"shown_after", Values(report.shownAfter)},
          {"messages", messages},
          {"dataflash_changes", changes}};
}

}  // namespace ombrelay
