#pragma once
// Two backups side by side, or a backup and the gauge as it is now: the parameters whose bytes
// differ, with their values before and after, and the rows that differ.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "dataflash/dataflash_backup.h"

namespace ombrelay {

// A parameter that is not the same in both: nothing on the side it is missing from.
struct ParameterChange {
  std::string name;  // "Class.Subclass.Parameter"
  std::optional<BackupParameter> before;
  std::optional<BackupParameter> after;
};

struct BackupComparison {
  // Where the two gauges' identities part, "device 4D31 -> 4B60, ..."; empty for the same kind.
  std::string identity;
  std::vector<ParameterChange> parameters;  // in the order of before, then those only in after
  std::vector<std::int32_t> rows;           // in either, and not the same in both
};

// Parameters are matched by class, subclass and name; one differs when its address, type or
// bytes do.
BackupComparison CompareBackups(const DataflashBackup& before, const DataflashBackup& after);

// "20451 -> 20460"; where the two values read the same (a float to three decimals, a string past
// its count), the bytes follow in brackets; a missing side is "(none)".
std::string ChangeText(const ParameterChange& change);

}  // namespace ombrelay
