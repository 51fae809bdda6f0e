#include "ui/grid_binder.h"

#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QTableWidget>

#include "shell/controls.h"

namespace ombrelay {
namespace {

Qt::Alignment ToQtAlignment(CellAlignment alignment) {
  return alignment == CellAlignment::Centre ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter;
}

// Values are read whole: one a little wider than its cell, such as a gain with three decimals,
// is cut at the cell's edge rather than losing its last digits to an ellipsis. The fixed cells
// keep the ellipsis, which tells a cut name from a whole one.
class ValueDelegate : public QStyledItemDelegate {
 public:
  ValueDelegate(const Grid& grid, QObject* parent) : QStyledItemDelegate(parent), grid_(grid) {}

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.row() >= grid_.FixedRows && index.column() >= grid_.FixedCols)
      option->textElideMode = Qt::ElideNone;
  }

 private:
  const Grid& grid_;
};

}  // namespace

GridBinder::GridBinder(QTableWidget& widget, const Grid& control)
    : widget_(widget), control_(control) {
  widget_.horizontalHeader()->hide();
  widget_.verticalHeader()->hide();
  // Rows as low as the control makes them, not as the style would like them.
  widget_.verticalHeader()->setMinimumSectionSize(1);
  widget_.horizontalHeader()->setMinimumSectionSize(1);
  widget_.setEditTriggers(QAbstractItemView::NoEditTriggers);
  widget_.setSelectionMode(QAbstractItemView::NoSelection);
  widget_.setFocusPolicy(Qt::NoFocus);
  // The control sizes the grid to its rows; scroll bars would only eat the value column.
  widget_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  widget_.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // The control's width is its columns' widths: a frame inside it would cut off the values.
  widget_.setFrameShape(QFrame::NoFrame);
  widget_.setItemDelegate(new ValueDelegate(control_, &widget_));
}

void GridBinder::Refresh() {
  SyncControl(widget_, control_);
  SyncShape();
  for (int row = 0; row < control_.Rows(); ++row) {
    for (int col = 0; col < control_.Cols(); ++col)
      SyncCell(row, col);
  }
}

void GridBinder::SyncShape() {
  if (widget_.rowCount() != control_.Rows()) widget_.setRowCount(control_.Rows());
  if (widget_.columnCount() != control_.Cols()) widget_.setColumnCount(control_.Cols());
  // A size of 0 is one the control has not set: the table keeps its own.
  for (int row = 0; row < control_.Rows(); ++row) {
    const int height = TwipsToPixels(control_.RowHeight(row));
    if (height > 0 && widget_.rowHeight(row) != height) widget_.setRowHeight(row, height);
  }
  for (int col = 0; col < control_.Cols(); ++col) {
    const int width = TwipsToPixels(control_.ColWidth(col));
    if (width > 0 && widget_.columnWidth(col) != width) widget_.setColumnWidth(col, width);
  }
}

void GridBinder::SyncCell(int row, int col) {
  const GridCell& cell = control_.Cell(row, col);
  QTableWidgetItem* item = widget_.item(row, col);
  if (item == nullptr) {
    item = new QTableWidgetItem;
    item->setFlags(Qt::ItemIsEnabled);
    widget_.setItem(row, col, item);
  }
  const QString text = QString::fromStdString(cell.Text);
  if (item->text() != text) item->setText(text);
  const Qt::Alignment alignment = ToQtAlignment(cell.Alignment);
  if (item->textAlignment() != static_cast<int>(alignment)) item->setTextAlignment(alignment);

  QFont font = widget_.font();
  font.setBold(cell.Bold);
  if (cell.FontSize > 0) font.setPointSize(cell.FontSize);
  if (item->font() != font) item->setFont(font);

  const bool fixed = row < control_.FixedRows || col < control_.FixedCols;
  const QBrush background = fixed ? widget_.palette().button() : QBrush();
  if (item->background() != background) item->setBackground(background);
}

}  // namespace ombrelay
