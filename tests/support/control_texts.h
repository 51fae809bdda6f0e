#pragma once
// A panel's controls written out one line each, to be compared with a list written out by hand:
// the caption, or a text box's text and limits, the tooltip, and the look where it is not the
// view's own (font, colours, alignment).

#include <array>
#include <string>
#include <vector>

#include "shell/controls.h"

namespace ombrelay::testing {

class ControlTexts {
 public:
  void Line(std::string line) { lines_.push_back(std::move(line)); }
  template <typename Control>
  void Add(const std::string& name, const Control& control) {
    std::string line = name;
    if constexpr (requires { control.Caption; }) line += " \"" + Visible(control.Caption) + "\"";
    if constexpr (requires { control.Text; }) {
      line += " text \"" + control.Text + "\"" + (control.Locked ? " read-only" : "") +
              (control.MaxLength > 0 ? " max " + std::to_string(control.MaxLength) : "");
    }
    if constexpr (requires { control.Alignment; }) line += Aligned(control.Alignment);
    if (!control.ToolTipText.empty()) line += " tip \"" + control.ToolTipText + "\"";
    Line(line + Look(control));
  }
  template <typename Control, std::size_t N>
  void Add(const std::string& name, const std::array<Control, N>& controls) {
    for (std::size_t i = 0; i < N; ++i)
      Add(name + "(" + std::to_string(i) + ")", controls[i]);
  }
  const std::vector<std::string>& Lines() const { return lines_; }

 private:
  // Line breaks show as \r and \n, so that each text stays on its line.
  static std::string Visible(const std::string& text);
  static std::string Aligned(TextAlignment alignment);
  static std::string Look(const Control& control);

  std::vector<std::string> lines_;
};

}  // namespace ombrelay::testing
