#include "cli/dataflash_commands.h"

#include "dataflash/backup_comparison.h"
#include "dataflash/backup_file.h"
#include "dataflash/dataflash_operations.h"
#include "dataflash/restore.h"

namespace ombrelay::cli {
namespace {

void AddIdentity(Report& report, const BackupIdentity& identity) {
  report.Add("device", "Device", identity.device.deviceNumber);
  report.Add("firmware", "Firmware version", identity.device.firmwareVersion);
  report.Add("firmware_type", "Firmware type", identity.device.firmwareType);
  report.Add("build", "Build", identity.device.buildNumber);
  report.Add("family", "Family", identity.family);
  report.Add("dataflash_map", "Dataflash map", identity.dataflashMap);
}

// Each changed parameter under its name, then the count and the rows.
void AddComparison(Report& report, const BackupComparison& comparison) {
  if (!comparison.identity.empty()) report.Add("identity", "Identity", comparison.identity);
  for (const ParameterChange& change : comparison.parameters)
    report.Add(change.name, change.name, ChangeText(change));
  report.Add("parameters_changed", "Parameters changed",
             std::to_string(comparison.parameters.size()));
  report.Add("rows", "Rows that differ", RowsText(comparison.rows));
}

void Backup(Session& session, const Options& options, Report& report) {
  const BackupOutcome outcome = BackupGauge(session.GetHost(), session.GetPlatform());
  if (!outcome.succeeded) {
    report.Fail(outcome.failure);
    return;
  }
  std::string failure;
  if (!WriteBackupFile(options.backupFile, outcome.backup, failure)) {
    report.Fail(failure);
    return;
  }
  report.succeeded = true;
  report.Add("file", "Backup", options.backupFile);
  AddIdentity(report, outcome.backup.identity);
  report.Add("parameters", "Parameters", std::to_string(outcome.backup.parameters.size()));
  std::vector<std::int32_t> rows;
  for (const auto& [row, bytes] : outcome.backup.rows)
    rows.push_back(row);
  report.Add("rows", "Rows", RowsText(rows));
}

void Restore(Session& session, const DataflashBackup& backup, Report& report) {
  const RestoreOutcome outcome = RestoreBackup(session.GetHost(), session.GetPlatform(), backup);
  for (const std::int32_t row : outcome.differing) {
    report.Add("row " + std::to_string(row), "Row " + std::to_string(row),
               RowOutcomeText(outcome, row));
  }
  report.Add("rows_written", "Rows written", RowsText(outcome.written));
  report.succeeded = outcome.succeeded;
  if (!outcome.succeeded) report.Fail(outcome.failure);
}

}  // namespace

bool ReadBackups(const Options& options, std::vector<DataflashBackup>& backups, Report& report) {
  std::vector<std::string> files;
  if (options.command == Command::DataflashDiff || options.command == Command::DataflashRestore)
    files.push_back(options.backupFile);
  if (options.command == Command::DataflashDiff && !options.secondBackupFile.empty())
    files.push_back(options.secondBackupFile);
  for (const std::string& file : files) {
    std::string failure;
    std::optional<DataflashBackup> backup = ReadBackupFile(file, failure);
    if (!backup) {
      report.Fail(failure);
      return false;
    }
    backups.push_back(std::move(*backup));
  }
  return true;
}

void CompareBackupFiles(const std::vector<DataflashBackup>& backups, Report& report) {
  report.succeeded = true;
  AddComparison(report, CompareBackups(backups.at(0), backups.at(1)));
}

void Dataflash(Session& session, const Options& options,
               const std::vector<DataflashBackup>& backups, Report& report) {
  switch (options.command) {
    case Command::DataflashBackup:
      Backup(session, options, report);
      break;
    case Command::DataflashRestore:
      Restore(session, backups.at(0), report);
      break;
    default: {
      const ComparisonOutcome outcome =
          CompareWithGauge(session.GetHost(), session.GetPlatform(), backups.at(0));
      if (!outcome.succeeded) {
        report.Fail(outcome.failure);
        return;
      }
      report.succeeded = true;
      AddComparison(report, outcome.comparison);
      break;
    }
  }
}

}  // namespace ombrelay::cli
