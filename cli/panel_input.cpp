#include "cli/panel_input.h"

#include "panel/run_event.h"

namespace ombrelay::cli {
namespace {

bool Reachable(const Control& control) {
  return control.Visible && control.Enabled;
}

}  // namespace

bool Type(TextBox& box, const std::string& text) {
  if (!Reachable(box) || box.Locked) return false;
  box.Text = text;
  return true;
}

bool Tick(CheckBox& box) {
  if (!Reachable(box)) return false;
  box.Value = 1;
  return true;
}

bool Press(const Button& button, const std::function<void()>& click) {
  if (!Reachable(button)) return false;
  RunEvent(click);
  return true;
}

void SelectTab(TabStrip& tabs, int tab, const std::function<void(std::int16_t)>& click) {
  const auto previous = static_cast<std::int16_t>(tabs.Tab);
  if (previous == tab) return;
  tabs.Tab = tab;
  RunEvent([&] { click(previous); });
}

std::string MarkText(const Picture& mark) {
  return mark.Visible ? "shown" : "hidden";
}

}  // namespace ombrelay::cli
