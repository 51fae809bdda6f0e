#pragma once
// Headless controls: the properties of the panels' widgets that the logic reads and writes.
// The views mirror them; what a click does is decided against these, never in a widget.
// Positions and sizes are in twips.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace ombrelay {

// The name of control index of a control array, as the panels and their views call it:
// "txtMeasTemp(2)".
inline std::string IndexedName(const char* name, std::size_t index) {
  return std::string(name) + "(" + std::to_string(index) + ")";
}

class Platform;

struct Control {
  bool Enabled = true;
  bool Visible = true;
  int Top = 0;
  int Left = 0;
  int Width = 0;
  int Height = 0;
  std::string ToolTipText;
  // Colours as 0xRRGGBB; no BackColor leaves the view's own.
  std::uint32_t ForeColor = 0x000000;
  std::optional<std::uint32_t> BackColor;
  // An empty name or a size of 0 leaves the view's own.
  std::string FontName;
  float FontSize = 0;
  bool FontBold = false;
};

enum class TextAlignment { Left, Right, Centre };

struct Label : Control {
  std::string Caption;
  TextAlignment Alignment = TextAlignment::Left;
};

// A rule drawn from (X1, Y1) to (X2, Y2).
struct Line : Control {
  int X1 = 0;
  int Y1 = 0;
  int X2 = 0;
  int Y2 = 0;
};

struct Frame : Control {
  std::string Caption;
};

struct Button : Control {
  std::string Caption;
};

// Value 0 is unchecked, 1 checked.
struct CheckBox : Control {
  std::string Caption;
  int Value = 0;
};

struct OptionButton : Control {
  std::string Caption;
  bool Value = false;
};

struct TextBox : Control {
  std::string Text;
  bool Locked = false;  // read-only for the user
  int MaxLength = 0;    // 0: no limit
  int SelStart = 0;
  int SelLength = 0;
};

// Picture frames and images: only whether they show.
struct Picture : Control {};

struct TabStrip : Control {
  std::vector<std::string> TabCaptions;
  int Tab = 0;
};

enum class CellAlignment { General, Left, Centre };

struct GridCell {
  std::string Text;
  CellAlignment Alignment = CellAlignment::General;
  bool Bold = false;
  int FontSize = 0;  // 0: the grid's own
};

// A table of text cells with fixed heading rows and columns. Reaching outside its rows or
// columns throws RuntimeError("Subscript out of range"), as the grid control does.
class Grid : public Control {
 public:
  int Rows() const { return static_cast<int>(cells_.size()); }
  int Cols() const { return cols_; }
  void SetRows(int rows);
  void SetCols(int cols);
  int FixedRows = 0;
  int FixedCols = 0;

  GridCell& Cell(int row, int col);
  const GridCell& Cell(int row, int col) const;
  int RowHeight(int row) const;
  void SetRowHeight(int row, int height);
  int ColWidth(int col) const;
  void SetColWidth(int col, int width);

 private:
  void CheckRow(int row) const;
  void CheckCol(int col) const;

  int cols_ = 0;
  std::vector<std::vector<GridCell>> cells_;
  std::vector<int> rowHeights_;
  std::vector<int> colWidths_;
};

// A timer runs Tick every Interval milliseconds while enabled, on the thread of the panel. The
// platform that drives it hears of every change.
class Timer {
 public:
  std::function<void()> Tick;

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  std::int32_t Interval() const { return interval_; }
  void SetInterval(std::int32_t milliseconds);

  // Called by the platform's AttachTimer and DetachTimer.
  void BindPlatform(Platform* platform) { platform_ = platform; }

 private:
  bool enabled_ = false;
  std::int32_t interval_ = 0;
  Platform* platform_ = nullptr;
};

}  // namespace ombrelay
