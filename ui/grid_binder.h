#pragma once
// A grid as a read-only table: row 0 and column 0 are its fixed cells, so the table's own
// headers stay hidden and the fixed cells are shaded like headers instead.

#include "ui/binding.h"

class QTableWidget;
class QTableWidgetItem;

namespace ombrelay {

class Grid;
struct GridCell;

class GridBinder : public Binding {
 public:
  GridBinder(QTableWidget& widget, const Grid& control);
  void Refresh() override;

 private:
  void SyncShape();
  void SyncCell(int row, int col);

  QTableWidget& widget_;
  const Grid& control_;
};

}  // namespace ombrelay
