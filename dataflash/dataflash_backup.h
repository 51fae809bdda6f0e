#pragma once
// A backup of a gauge's dataflash: which gauge it is, each parameter of its map with its address,
// type, bytes and value, and the raw rows that hold them. A backup is all a restore needs: it
// carries its own layout, whatever map is installed when it is read again.

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "config/identification.h"
#include "gauge/dataflash_rows.h"

namespace ombrelay {

// Which gauge the bytes are of: what its identification says, its family, and the map file
// (relative to the application directory) its parameters were laid out by.
struct BackupIdentity {
  DeviceIdentity device;
  std::string family;
  std::string dataflashMap;

  bool operator==(const BackupIdentity&) const = default;
};

struct BackupParameter {
  std::string className;
  std::string subclassName;
  std::string name;
  std::int32_t address = 0;
  std::string type;  // upper case, as the map reader folds it
  std::vector<std::uint8_t> bytes;
  std::string value;  // the bytes decoded by their type

  bool operator==(const BackupParameter&) const = default;
};

using DataflashRow = std::array<std::uint8_t, kRowLength>;
using DataflashRows = std::map<std::int32_t, DataflashRow>;

struct DataflashBackup {
  BackupIdentity identity;
  // In the map's order when taken from a gauge; by address when read from a file.
  std::vector<BackupParameter> parameters;
  DataflashRows rows;  // by row number
};

// Addresses run over 16 bits, as the map's do.
inline constexpr std::int32_t kDataflashAddresses = 65536;
inline constexpr std::int32_t kDataflashRows = kDataflashAddresses / kRowLength;

// "Class.Subclass.Parameter", as the map search names a parameter.
std::string ParameterName(const BackupParameter& parameter);

// A field of two identities that is not the same in both: "firmware", "2_05", "1_10".
struct IdentityDifference {
  std::string field;
  std::string first;
  std::string second;
};

// Where the two identities part, in the order device, firmware, firmware type, build, family;
// empty when they name the same kind of gauge. The map file is not among them: another
// installation may keep the same map under another name.
std::vector<IdentityDifference> IdentityDifferences(const BackupIdentity& first,
                                                    const BackupIdentity& second);

// Two upper-case hex digits a byte, first byte first.
std::string HexBytes(std::span<const std::uint8_t> bytes);

// "0, 2, 17", or "none".
std::string RowsText(std::span<const std::int32_t> rows);

// How many bytes the parameter takes from its address on: as many as its type does, which must
// be a type of known size.
std::int32_t SizeOf(const BackupParameter& parameter);

// The rows that the parameters' bytes lie in.
std::set<std::int32_t> RowsOf(std::span<const BackupParameter> parameters);

// The parameter's bytes as rows hold them, which must include every row it lies in.
std::vector<std::uint8_t> BytesFromRows(const BackupParameter& parameter,
                                        const DataflashRows& rows);

// Fills each parameter's bytes and value from rows.
void TakeValuesFromRows(std::span<BackupParameter> parameters, const DataflashRows& rows);

}  // namespace ombrelay
