#pragma once
// Putting a backup back into the gauge it was taken of: only the rows that differ are written,
// each read back and compared before the next, and the first failure stops the restore.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "dataflash/dataflash_backup.h"
#include "shell/host.h"
#include "shell/platform.h"

namespace ombrelay {

struct RestoreOutcome {
  bool succeeded = false;
  // Why the restore was refused or stopped; empty when it succeeded.
  std::string failure;
  // The backup's rows that the gauge held otherwise, in the order they are written.
  std::vector<std::int32_t> differing;
  // Those written and read back the same, in order.
  std::vector<std::int32_t> written;
  // The row that failed, when one did; the rows after it are not written.
  std::optional<std::int32_t> failedRow;
};

// Identifies the gauge afresh; refuses, writing nothing, a gauge whose family has no absolute
// dataflash access, that is not the kind of gauge the backup is of, or that is not Unsealed or
// in Full Access, in that order. Then reads the backup's rows from the gauge and writes those
// that differ, each verified by its read-back.
RestoreOutcome RestoreBackup(Host& host, Platform& platform, const DataflashBackup& backup);

// What happened to each row that differed: "written and verified", the failure, or "not
// written".
std::string RowOutcomeText(const RestoreOutcome& outcome, std::int32_t row);

}  // namespace ombrelay
