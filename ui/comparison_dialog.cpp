#include "ui/comparison_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace ombrelay {
namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 420;

QString Text(const std::string& text) {
  return QString::fromStdString(text);
}

// A parameter's value, or a dash on the side it is missing from; with its bytes where both sides
// read the same, as a float to three decimals can.
QString ValueOf(const std::optional<BackupParameter>& parameter, bool withBytes) {
  if (!parameter) return QStringLiteral("—");
  return Text(parameter->value) + (withBytes ? " [" + Text(HexBytes(parameter->bytes)) + "]" : "");
}

}  // namespace

ComparisonDialog::ComparisonDialog(const BackupComparison& comparison, const QString& file,
                                   QWidget* parent)
    : QDialog(parent) {
  setWindowTitle("Dataflash compared with the gauge");
  QString summary = "Backup: " + file;
  if (!comparison.identity.empty())
    summary += "\nAnother kind of gauge: " + Text(comparison.identity);
  summary += "\nRows that differ: " + Text(RowsText(comparison.rows));
  summary_ = new QLabel(summary, this);
  summary_->setTextFormat(Qt::PlainText);
  summary_->setTextInteractionFlags(Qt::TextSelectableByMouse);

  parameters_ = new QTableWidget(static_cast<int>(comparison.parameters.size()), 3, this);
  parameters_->setObjectName("parameters");
  parameters_->setHorizontalHeaderLabels({"Parameter", "Backup", "Gauge"});
  parameters_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  parameters_->verticalHeader()->hide();
  parameters_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
  for (int row = 0; row < parameters_->rowCount(); ++row) {
    const ParameterChange& change = comparison.parameters[static_cast<std::size_t>(row)];
    parameters_->setItem(row, 0, new QTableWidgetItem(Text(change.name)));
    const bool withBytes =
        change.before && change.after && change.before->value == change.after->value;
    parameters_->setItem(row, 1, new QTableWidgetItem(ValueOf(change.before, withBytes)));
    parameters_->setItem(row, 2, new QTableWidgetItem(ValueOf(change.after, withBytes)));
  }

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(parameters_);
  layout->addWidget(buttons);
  resize(kWidth, kHeight);
}

QString ComparisonDialog::Summary() const {
  return summary_->text();
}

}  // namespace ombrelay
