#include "dataflash/backup_file.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

#include "gauge/value_conversion.h"
#include "shell/json_file.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

using nlohmann::json;
// Written in the map's order; read back sorted by address, which is the order of the maps.
using OrderedJson = nlohmann::ordered_json;

constexpr const char* kFormat = "ombrelay-dataflash-backup/1";
// One parameter for each address is more than any map has.
constexpr std::size_t kMaxParameters = kDataflashAddresses;

// Why a file is refused; thrown and caught only inside the reader.
class BackupRefused : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

OrderedJson GaugeJson(const BackupIdentity& identity) {
  return {{"device", identity.device.deviceNumber},
          {"firmware", identity.device.firmwareVersion},
          {"firmware_type", identity.device.firmwareType},
          {"build", identity.device.buildNumber},
          {"family", identity.family},
          {"dataflash_map", identity.dataflashMap}};
}

OrderedJson BackupJson(const DataflashBackup& backup) {
  OrderedJson parameters = OrderedJson::object();
  for (const BackupParameter& parameter : backup.parameters) {
    parameters[parameter.className][parameter.subclassName][parameter.name] = {
        {"address", parameter.address},
        {"type", parameter.type},
        {"bytes", HexBytes(parameter.bytes)},
        {"value", parameter.value}};
  }
  OrderedJson rows = OrderedJson::object();
  for (const auto& [row, bytes] : backup.rows)
    rows[std::to_string(row)] = HexBytes(bytes);
  return {{"format", kFormat},
          {"gauge", GaugeJson(backup.identity)},
          {"parameters", parameters},
          {"rows", rows}};
}

const json& Member(const json& object, const char* key, const std::string& where) {
  const auto member = object.find(key);
  if (member == object.end()) throw BackupRefused(where + key + " is missing");
  return *member;
}

const json& Object(const json& object, const char* key, const std::string& where) {
  const json& member = Member(object, key, where);
  if (!member.is_object()) throw BackupRefused(where + key + " is not an object");
  return member;
}

std::string Text(const json& object, const char* key, const std::string& where) {
  const json& member = Member(object, key, where);
  if (!member.is_string()) throw BackupRefused(where + key + " is not a text");
  return member.get<std::string>();
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// A text from the file as a message quotes it: cut, as the file may hold texts of any length,
// though never inside a character, so that the message stays UTF-8.
std::string Quoted(const std::string& text) {
  constexpr std::size_t kShown = 64;
  if (text.size() <= kShown) return "\"" + text + "\"";
  std::size_t cut = kShown;
  while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0U) == 0x80U)
    --cut;
  return "\"" + text.substr(0, cut) + "...\"";
}

// Exactly count bytes in hex; what names the member in a message.
std::vector<std::uint8_t> HexBytesOf(const json& member, std::size_t count,
                                     const std::string& what) {
  if (!member.is_string()) throw BackupRefused(what + " is not a text");
  const auto& text = member.get_ref<const std::string&>();
  const std::string refusal = what + " is not " + std::to_string(count) + " bytes in hex";
  if (text.size() != 2 * count) throw BackupRefused(refusal);
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < count; ++i) {
    const int high = HexDigit(text[2 * i]);
    const int low = HexDigit(text[2 * i + 1]);
    if (high < 0 || low < 0) throw BackupRefused(refusal);
    bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
  }
  return bytes;
}

BackupIdentity ReadIdentity(const json& root) {
  const json& gauge = Object(root, "gauge", "");
  const std::string where = "gauge: ";
  BackupIdentity identity{{Text(gauge, "device", where), Text(gauge, "firmware", where),
                           Text(gauge, "firmware_type", where), Text(gauge, "build", where)},
                          Text(gauge, "family", where),
                          Text(gauge, "dataflash_map", where)};
  if (identity.family != kFamilyNames[MORLIN] && identity.family != kFamilyNames[KELD_PLUS])
    throw BackupRefused(where + "family is not MORLIN or KELD_PLUS: " + Quoted(identity.family));
  return identity;
}

BackupParameter ReadParameter(const std::string& className, const std::string& subclassName,
                              const std::string& name, const json& object,
                              const std::string& where) {
  if (!object.is_object()) throw BackupRefused(where + "is not an object");
  BackupParameter parameter{className, subclassName, name, 0, Text(object, "type", where), {}, {}};
  const auto size = DataflashValueSize(parameter.type);
  if (!size) {
    throw BackupRefused(where + "type " + Quoted(parameter.type) + " is not one of known size");
  }
  const json& address = Member(object, "address", where);
  if (!address.is_number_unsigned() ||
      address.get<std::uint64_t>() > static_cast<std::uint64_t>(kDataflashAddresses) - *size) {
    throw BackupRefused(where + "address is not an integer from 0 to " +
                        std::to_string(kDataflashAddresses - static_cast<std::int32_t>(*size)));
  }
  parameter.address = static_cast<std::int32_t>(address.get<std::uint64_t>());
  parameter.bytes = HexBytesOf(Member(object, "bytes", where), *size, where + "bytes");
  parameter.value = Text(object, "value", where);
  if (parameter.value != DataflashValueText(parameter.type, parameter.bytes)) {
    throw BackupRefused(where + "value " + Quoted(parameter.value) +
                        " is not what its bytes give, " +
                        Quoted(DataflashValueText(parameter.type, parameter.bytes)));
  }
  return parameter;
}

// The members of an object that must hold objects, each with its place for messages.
template <typename Visit>
void EachObject(const json& object, const std::string& where, Visit visit) {
  for (const auto& [name, member] : object.items()) {
    const std::string place = where + Quoted(name) + ": ";
    if (!member.is_object()) throw BackupRefused(place + "is not an object");
    visit(name, member, place);
  }
}

std::vector<BackupParameter> ReadParameters(const json& root) {
  std::vector<BackupParameter> parameters;
  EachObject(
      Object(root, "parameters", ""), "parameters: ",
      [&](const std::string& className, const json& subclasses, const std::string& inClass) {
        EachObject(
            subclasses, inClass,
            [&](const std::string& subclassName, const json& members,
                const std::string& inSubclass) {
              for (const auto& [name, member] : members.items()) {
                if (parameters.size() == kMaxParameters) {
                  throw BackupRefused("parameters: more than " + std::to_string(kMaxParameters));
                }
                parameters.push_back(ReadParameter(className, subclassName, name, member,
                                                   inSubclass + Quoted(name) + ": "));
              }
            });
      });
  if (parameters.empty()) throw BackupRefused("parameters: there are none");
  std::ranges::stable_sort(parameters, {}, &BackupParameter::address);
  return parameters;
}

// A row number as the file writes it: decimal digits, no sign and no leading zero.
std::int32_t RowNumber(const std::string& key) {
  const bool digits = !key.empty() && key.size() <= 4 &&
                      key.find_first_not_of("0123456789") == std::string::npos &&
                      (key == "0" || key[0] != '0');
  const std::int32_t row = digits ? std::stoi(key) : kDataflashRows;
  if (row >= kDataflashRows) {
    throw BackupRefused("rows: " + Quoted(key) + " is not a row number from 0 to " +
                        std::to_string(kDataflashRows - 1));
  }
  return row;
}

DataflashRows ReadRows(const json& root) {
  DataflashRows rows;
  for (const auto& [key, member] : Object(root, "rows", "").items()) {
    const std::int32_t row = RowNumber(key);
    const std::vector<std::uint8_t> bytes = HexBytesOf(member, kRowLength, "rows: " + key);
    std::copy(bytes.begin(), bytes.end(), rows[row].begin());
  }
  return rows;
}

// Every parameter's bytes stand in its rows, and every row holds a parameter: the rows are what
// a restore writes.
void CheckRowsHoldParameters(const DataflashBackup& backup) {
  const std::set<std::int32_t> needed = RowsOf(backup.parameters);
  for (const std::int32_t row : needed) {
    if (!backup.rows.contains(row))
      throw BackupRefused("rows: row " + std::to_string(row) + " is missing");
  }
  for (const auto& [row, bytes] : backup.rows) {
    if (!needed.contains(row))
      throw BackupRefused("rows: row " + std::to_string(row) + " holds no parameter");
  }
  for (const BackupParameter& parameter : backup.parameters) {
    if (BytesFromRows(parameter, backup.rows) != parameter.bytes) {
      throw BackupRefused("parameters: " + ParameterName(parameter) +
                          ": bytes are not those its rows hold, " +
                          HexBytes(BytesFromRows(parameter, backup.rows)));
    }
  }
}

DataflashBackup ReadBackup(const json& root) {
  if (!root.is_object()) throw BackupRefused("not an object");
  const auto format = root.find("format");
  if (format == root.end() || *format != kFormat)
    throw BackupRefused(std::string("format is not ") + kFormat);
  DataflashBackup backup{ReadIdentity(root), ReadParameters(root), ReadRows(root)};
  CheckRowsHoldParameters(backup);
  return backup;
}

}  // namespace

bool WriteBackupFile(const std::string& path, const DataflashBackup& backup, std::string& failure) {
  // Names come from the map cut to the map reader's buffer, which may split a character: such a
  // byte is written as U+FFFD rather than refused.
  const std::string text =
      BackupJson(backup).dump(2, ' ', false, OrderedJson::error_handler_t::replace) + "\n";
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file || !file.write(text.data(), static_cast<std::streamsize>(text.size())) ||
      !file.flush()) {
    failure = "the backup cannot be written to " + path;
    return false;
  }
  return true;
}

std::optional<DataflashBackup> ReadBackupFile(const std::string& path, std::string& failure) {
  try {
    return ReadBackup(ReadJsonFile(path));
  } catch (const JsonRefused& refusal) {
    failure = "the backup " + path + " is refused: " + refusal.what();
  } catch (const BackupRefused& refusal) {
    failure = "the backup " + path + " is refused: " + refusal.what();
  }
  return std::nullopt;
}

}  // namespace ombrelay
