#include "ui/dataflash_actions.h"

#include <optional>

#include "dataflash/backup_file.h"
#include "dataflash/dataflash_operations.h"
#include "dataflash/restore.h"
#include "panel/run_event.h"
#include "ui/comparison_dialog.h"

namespace ombrelay {
namespace {

constexpr const char* kBackupTitle = "Dataflash backup";
constexpr const char* kComparisonTitle = "Dataflash comparison";
constexpr const char* kRestoreTitle = "Dataflash restore";

// The program's reasons read as sentences in a box.
std::string Sentence(std::string text) {
  if (!text.empty() && text[0] >= 'a' && text[0] <= 'z')
    text[0] = static_cast<char>(text[0] - 'a' + 'A');
  return text + ".";
}

// False, after a box, while a panel's handler is under way.
bool Free(Platform& platform, const char* title) {
  if (!EventRunning()) return true;
  platform.MessageBox("The panel is busy with the gauge. Try again once it has finished.",
                      MessageStyle::Error, title);
  return false;
}

std::optional<DataflashBackup> Read(Platform& platform, const QString& file, const char* title) {
  std::string failure;
  std::optional<DataflashBackup> backup = ReadBackupFile(file.toStdString(), failure);
  if (!backup) platform.MessageBox(Sentence(failure), MessageStyle::Error, title);
  return backup;
}

// "row 11", "rows 0, 2".
std::string RowsPhrase(const std::vector<std::int32_t>& rows) {
  return (rows.size() == 1 ? "row " : "rows ") + RowsText(rows);
}

std::string IdentityText(const BackupIdentity& identity) {
  return identity.family + " device " + identity.device.deviceNumber + ", firmware " +
         identity.device.firmwareVersion;
}

void Backup(Host& host, Platform& platform, const QString& file) {
  const BackupOutcome outcome = BackupGauge(host, platform);
  std::string failure = outcome.failure;
  if (outcome.succeeded && WriteBackupFile(file.toStdString(), outcome.backup, failure)) {
    std::vector<std::int32_t> rows;
    for (const auto& [row, bytes] : outcome.backup.rows)
      rows.push_back(row);
    platform.MessageBox("Backed up " + std::to_string(outcome.backup.parameters.size()) +
                            " parameters of the " + IdentityText(outcome.backup.identity) +
                            ", in " + RowsPhrase(rows) + ", into " + file.toStdString() + ".",
                        MessageStyle::Plain, kBackupTitle);
    return;
  }
  platform.MessageBox(Sentence(failure), MessageStyle::Error, kBackupTitle);
}

void Compare(Host& host, Platform& platform, const QString& file, QWidget* parent) {
  const std::optional<DataflashBackup> backup = Read(platform, file, kComparisonTitle);
  if (!backup) return;
  const ComparisonOutcome outcome = CompareWithGauge(host, platform, *backup);
  if (!outcome.succeeded) {
    platform.MessageBox(Sentence(outcome.failure), MessageStyle::Error, kComparisonTitle);
  } else if (outcome.comparison.parameters.empty() && outcome.comparison.rows.empty() &&
             outcome.comparison.identity.empty()) {
    platform.MessageBox("The gauge holds what " + file.toStdString() + " holds.",
                        MessageStyle::Plain, kComparisonTitle);
  } else {
    ComparisonDialog(outcome.comparison, file, parent).exec();
  }
}

void Restore(Host& host, Platform& platform, const QString& file) {
  const std::optional<DataflashBackup> backup = Read(platform, file, kRestoreTitle);
  if (!backup) return;
  const RestoreOutcome outcome = RestoreBackup(host, platform, *backup);
  if (!outcome.succeeded) {
    platform.MessageBox(Sentence(outcome.failure), MessageStyle::Error, kRestoreTitle);
  } else if (outcome.written.empty()) {
    platform.MessageBox(
        "The gauge already holds what " + file.toStdString() + " holds: nothing was written.",
        MessageStyle::Plain, kRestoreTitle);
  } else {
    platform.MessageBox("Restored " + file.toStdString() + ": " + RowsPhrase(outcome.written) +
                            " written, each read back the same.",
                        MessageStyle::Plain, kRestoreTitle);
  }
}

}  // namespace

void BackupDataflash(Host& host, Platform& platform, const QString& file) {
  if (Free(platform, kBackupTitle)) RunEvent([&] { Backup(host, platform, file); });
}

void CompareDataflash(Host& host, Platform& platform, const QString& file, QWidget* parent) {
  if (Free(platform, kComparisonTitle)) RunEvent([&] { Compare(host, platform, file, parent); });
}

void RestoreDataflash(Host& host, Platform& platform, const QString& file) {
  if (Free(platform, kRestoreTitle)) RunEvent([&] { Restore(host, platform, file); });
}

}  // namespace ombrelay
