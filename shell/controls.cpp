#include "shell/controls.h"

#include "shell/numeric.h"
#include "shell/platform.h"

namespace ombrelay {

void Grid::SetRows(int rows) {
  if (rows < 0) throw RuntimeError(kSubscriptOutOfRange);
  cells_.resize(static_cast<std::size_t>(rows),
                std::vector<GridCell>(static_cast<std::size_t>(cols_)));
  rowHeights_.resize(static_cast<std::size_t>(rows), 0);
}

void Grid::SetCols(int cols) {
  if (cols < 0) throw RuntimeError(kSubscriptOutOfRange);
  cols_ = cols;
  for (auto& row : cells_)
    row.resize(static_cast<std::size_t>(cols));
  colWidths_.resize(static_cast<std::size_t>(cols), 0);
}

GridCell& Grid::Cell(int row, int col) {
  CheckRow(row);
  CheckCol(col);
  return cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
}

const GridCell& Grid::Cell(int row, int col) const {
  CheckRow(row);
  CheckCol(col);
  return cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
}

int Grid::RowHeight(int row) const {
  CheckRow(row);
  return rowHeights_[static_cast<std::size_t>(row)];
}

void Grid::SetRowHeight(int row, int height) {
  CheckRow(row);
  rowHeights_[static_cast<std::size_t>(row)] = height;
}

int Grid::ColWidth(int col) const {
  CheckCol(col);
  return colWidths_[static_cast<std::size_t>(col)];
}

void Grid::SetColWidth(int col, int width) {
  CheckCol(col);
  colWidths_[static_cast<std::size_t>(col)] = width;
}

void Grid::CheckRow(int row) const {
  if (row < 0 || row >= Rows()) throw RuntimeError(kSubscriptOutOfRange);
}

void Grid::CheckCol(int col) const {
  if (col < 0 || col >= cols_) throw RuntimeError(kSubscriptOutOfRange);
}

void Timer::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  if (platform_ != nullptr) platform_->TimerChanged(*this);
}

void Timer::SetInterval(std::int32_t milliseconds) {
  interval_ = milliseconds;
  if (platform_ != nullptr) platform_->TimerChanged(*this);
}

}  // namespace ombrelay
