#pragma once
// The bench's bus log: every operation on the bus decoded into a row, as a protocol analyser
// shows it, with a filter over all columns and a switch that shows keys in clear.

#include <QDockWidget>
#include <functional>

#include "hosts/bus_log_decoder.h"

class QCheckBox;
class QLineEdit;
class QSortFilterProxyModel;
class QTableView;

namespace ombrelay {

class BusLogModel;

class BusLogDock : public QDockWidget {
 public:
  // configured gives the panels' configuration as it stands at each operation.
  explicit BusLogDock(std::function<ConfiguredCommands()> configured, QWidget* parent = nullptr);

  // Decodes operation into a row; a view that showed the latest row follows it.
  void Add(const BusOperation& operation);

 private:
  BusLogDecoder decoder_;
  BusLogModel* rows_;
  QSortFilterProxyModel* filtered_;
  QTableView* table_;
  QLineEdit* filter_;
  QCheckBox* showKeys_;
};

}  // namespace ombrelay
