#include "app/bus_log_model.h"

#include <QBrush>
#include <QColor>
#include <QFontDatabase>
#include <array>
#include <utility>

namespace ombrelay {
namespace {

constexpr std::array<const char*, BusLogModel::kColumnCount> kHeadings = {
    "Time", "Operation", "Command", "Bytes", "Status"};
// A pale red behind a failed row and a dark one for its text, readable on either.
const QColor kFailedBackground(255, 221, 221);
const QColor kFailedText(153, 0, 0);

}  // namespace

BusLogModel::BusLogModel(std::size_t capacity, QObject* parent)
    : QAbstractTableModel(parent), capacity_(capacity) {}

void BusLogModel::Append(BusLogRow row) {
  if (rows_.size() == capacity_) {
    beginRemoveRows({}, 0, 0);
    rows_.pop_front();
    endRemoveRows();
  }
  const int at = static_cast<int>(rows_.size());
  beginInsertRows({}, at, at);
  rows_.push_back(std::move(row));
  endInsertRows();
}

void BusLogModel::SetShowKeys(bool show) {
  if (std::exchange(showKeys_, show) == show || rows_.empty()) return;
  emit dataChanged(index(0, kBytes), index(rowCount() - 1, kBytes));
}

int BusLogModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int BusLogModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

QString BusLogModel::Text(const BusLogRow& row, int column) const {
  switch (column) {
    case kTime:
      return QString::fromStdString(row.time);
    case kOperation:
      return QString::fromStdString(row.operation);
    case kCommand:
      return QString::fromStdString(row.command);
    case kBytes:
      return QString::fromStdString(showKeys_ && row.keyBytes ? *row.keyBytes : row.bytes);
    default:
      return QString::fromStdString(row.status);
  }
}

QVariant BusLogModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const BusLogRow& row = rows_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
      return Text(row, index.column());
    // A long name or block does not fit its cell.
    case Qt::ToolTipRole:
      if (index.column() == kCommand || index.column() == kBytes) return Text(row, index.column());
      return {};
    case Qt::FontRole:
      if (index.column() == kTime || index.column() == kBytes)
        return QFontDatabase::systemFont(QFontDatabase::FixedFont);
      return {};
    case Qt::TextAlignmentRole:
      if (index.column() == kTime) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
      return {};
    case Qt::BackgroundRole:
      return row.failed ? QBrush(kFailedBackground) : QVariant();
    case Qt::ForegroundRole:
      return row.failed ? QBrush(kFailedText) : QVariant();
    default:
      return {};
  }
}

QVariant BusLogModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
      section >= kColumnCount)
    return {};
  return QString(kHeadings[static_cast<std::size_t>(section)]);
}

}  // namespace ombrelay
