#pragma once
// The decoded bus log as a table: the latest rows only, failed ones marked, and the bytes of
// keys withheld unless keys are to be shown.

#include <QAbstractTableModel>
#include <cstddef>
#include <deque>

#include "hosts/bus_log_decoder.h"

namespace ombrelay {

class BusLogModel : public QAbstractTableModel {
 public:
  enum Column { kTime, kOperation, kCommand, kBytes, kStatus, kColumnCount };

  // Keeps the latest capacity rows.
  explicit BusLogModel(std::size_t capacity, QObject* parent = nullptr);

  void Append(BusLogRow row);
  void SetShowKeys(bool show);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QString Text(const BusLogRow& row, int column) const;

  std::size_t capacity_;
  std::deque<BusLogRow> rows_;
  bool showKeys_ = false;
};

}  // namespace ombrelay
