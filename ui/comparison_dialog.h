#pragma once
// A comparison of a backup with the gauge, as the bench shows it: each changed parameter with
// its value in the backup and on the gauge, and the rows that differ.

#include <QDialog>

#include "dataflash/backup_comparison.h"

class QLabel;
class QTableWidget;

namespace ombrelay {

class ComparisonDialog : public QDialog {
  Q_OBJECT

 public:
  // file names the backup.
  ComparisonDialog(const BackupComparison& comparison, const QString& file,
                   QWidget* parent = nullptr);

  // Parameter, value in the backup, value on the gauge: a row for each changed parameter.
  const QTableWidget& Parameters() const { return *parameters_; }
  // What stands above the table: the backup, the identity where it differs, the rows.
  QString Summary() const;

 private:
  QLabel* summary_ = nullptr;
  QTableWidget* parameters_ = nullptr;
};

}  // namespace ombrelay
