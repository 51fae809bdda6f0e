#pragma once
// The dataflash operations that read a gauge: a backup of what its map covers, and a comparison
// of a backup with what the gauge holds now. Each identifies the gauge afresh and reads only
// from a gauge that is Unsealed or in Full Access.

#include <string>

#include "dataflash/backup_comparison.h"
#include "dataflash/dataflash_backup.h"
#include "shell/host.h"
#include "shell/platform.h"

namespace ombrelay {

struct BackupOutcome {
  bool succeeded = false;
  std::string failure;  // why not, when it did not succeed
  DataflashBackup backup;
};

struct ComparisonOutcome {
  bool succeeded = false;
  std::string failure;
  BackupComparison comparison;  // the backup before, the gauge after
};

// Every parameter of the gauge's map, read through the rows it lies in.
BackupOutcome BackupGauge(Host& host, Platform& platform);

// The backup's rows read from the gauge and compared with it, parameter by parameter as the
// backup lays them out. A gauge of another kind is compared all the same: its identity stands
// in the comparison.
ComparisonOutcome CompareWithGauge(Host& host, Platform& platform, const DataflashBackup& backup);

}  // namespace ombrelay
