#include "dataflash/restore.h"

#include <algorithm>

#include "dataflash/gauge_preparation.h"
#include "dataflash/gauge_rows.h"

namespace ombrelay {
namespace {

std::string OtherGauge(const std::vector<IdentityDifference>& differences) {
  std::string text = "the backup is of another kind of gauge: ";
  for (std::size_t i = 0; i < differences.size(); ++i) {
    text += (i == 0 ? "" : "; ") + differences[i].field + " " + differences[i].first +
            " in the backup, " + differences[i].second + " on the gauge";
  }
  return text;
}

}  // namespace

RestoreOutcome RestoreBackup(Host& host, Platform& platform, const DataflashBackup& backup) {
  RestoreOutcome outcome;
  BackupIdentity gauge;
  if (!PrepareGauge(host, platform, gauge, outcome.failure)) return outcome;
  const std::vector<IdentityDifference> differences = IdentityDifferences(backup.identity, gauge);
  if (!differences.empty()) {
    outcome.failure = OtherGauge(differences);
    return outcome;
  }
  if (!CheckSecurityMode("a restore", outcome.failure)) return outcome;

  std::set<std::int32_t> rows;
  for (const auto& [row, bytes] : backup.rows)
    rows.insert(row);
  DataflashRows present;
  if (!ReadGaugeRows(rows, present, outcome.failure)) {
    outcome.failure += ", so nothing was written";
    return outcome;
  }
  for (const auto& [row, bytes] : backup.rows) {
    if (present.at(row) != bytes) outcome.differing.push_back(row);
  }
  for (const std::int32_t row : outcome.differing) {
    std::string why;
    if (!WriteVerifiedRow(row, backup.rows.at(row), why)) {
      outcome.failedRow = row;
      outcome.failure = "the restore stopped: " + why +
                        "; rows written and verified before it: " + RowsText(outcome.written);
      return outcome;
    }
    outcome.written.push_back(row);
  }
  outcome.succeeded = true;
  return outcome;
}

std::string RowOutcomeText(const RestoreOutcome& outcome, std::int32_t row) {
  if (std::ranges::find(outcome.written, row) != outcome.written.end())
    return "written and verified";
  if (outcome.failedRow == row) return "failed";
  return "not written";
}

}  // namespace ombrelay
