#include "dataflash/dataflash_operations.h"

#include "dataflash/gauge_preparation.h"
#include "dataflash/gauge_rows.h"
#include "dataflash/map_layout.h"

namespace ombrelay {

BackupOutcome BackupGauge(Host& host, Platform& platform) {
  BackupOutcome outcome;
  DataflashBackup& backup = outcome.backup;
  if (!PrepareGauge(host, platform, backup.identity, outcome.failure) ||
      !ReadMapLayout(backup.parameters, outcome.failure) ||
      !CheckSecurityMode("a backup", outcome.failure) ||
      !ReadGaugeRows(RowsOf(backup.parameters), backup.rows, outcome.failure)) {
    return outcome;
  }
  TakeValuesFromRows(backup.parameters, backup.rows);
  outcome.succeeded = true;
  return outcome;
}

ComparisonOutcome CompareWithGauge(Host& host, Platform& platform, const DataflashBackup& backup) {
  ComparisonOutcome outcome;
  DataflashBackup now{{}, backup.parameters, {}};
  if (!PrepareGauge(host, platform, now.identity, outcome.failure) ||
      !CheckSecurityMode("a comparison", outcome.failure) ||
      !ReadGaugeRows(RowsOf(backup.parameters), now.rows, outcome.failure)) {
    return outcome;
  }
  TakeValuesFromRows(now.parameters, now.rows);
  outcome.comparison = CompareBackups(backup, now);
  outcome.succeeded = true;
  return outcome;
}

}  // namespace ombrelay
