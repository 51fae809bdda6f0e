#include "dataflash/dataflash_backup.h"

#include <array>

#include "gauge/value_conversion.h"

namespace ombrelay {

std::string ParameterName(const BackupParameter& parameter) {
  return parameter.className + "." + parameter.subclassName + "." + parameter.name;
}

std::vector<IdentityDifference> IdentityDifferences(const BackupIdentity& first,
                                                    const BackupIdentity& second) {
  const std::array<IdentityDifference, 5> fields = {{
      {"device", first.device.deviceNumber, second.device.deviceNumber},
      {"firmware", first.device.firmwareVersion, second.device.firmwareVersion},
      {"firmware type", first.device.firmwareType, second.device.firmwareType},
      {"build", first.device.buildNumber, second.device.buildNumber},
      {"family", first.family, second.family},
  }};
  std::vector<IdentityDifference> differences;
  for (const IdentityDifference& field : fields) {
    if (field.first != field.second) differences.push_back(field);
  }
  return differences;
}

std::string HexBytes(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes)
    text += ByteHexString(byte);
  return text;
}

std::string RowsText(std::span<const std::int32_t> rows) {
  if (rows.empty()) return "none";
  std::string text;
  for (const std::int32_t row : rows)
    text += (text.empty() ? "" : ", ") + std::to_string(row);
  return text;
}

std::int32_t SizeOf(const BackupParameter& parameter) {
  return static_cast<std::int32_t>(DataflashValueSize(parameter.type).value());
}

std::set<std::int32_t> RowsOf(std::span<const BackupParameter> parameters) {
  std::set<std::int32_t> rows;
  for (const BackupParameter& parameter : parameters) {
    const std::int32_t last = parameter.address + SizeOf(parameter) - 1;
    for (std::int32_t row = parameter.address / kRowLength; row <= last / kRowLength; ++row)
      rows.insert(row);
  }
  return rows;
}

std::vector<std::uint8_t> BytesFromRows(const BackupParameter& parameter,
                                        const DataflashRows& rows) {
  std::vector<std::uint8_t> bytes;
  for (std::int32_t i = 0; i < SizeOf(parameter); ++i) {
    const std::int32_t address = parameter.address + i;
    bytes.push_back(rows.at(address / kRowLength)[static_cast<std::size_t>(address % kRowLength)]);
  }
  return bytes;
}

void TakeValuesFromRows(std::span<BackupParameter> parameters, const DataflashRows& rows) {
  for (BackupParameter& parameter : parameters) {
    parameter.bytes = BytesFromRows(parameter, rows);
    parameter.value = DataflashValueText(parameter.type, parameter.bytes);
  }
}

}  // namespace ombrelay
