#pragma once
// What a user does to a headless panel: type into a box, tick a check box, press a button. Each
// takes only a control that shows and is enabled, as a user could reach only such a one; the
// handlers run as the event loop runs them, a run-time error shown in a box.

#include <functional>
#include <string>

#include "shell/controls.h"

namespace ombrelay::cli {

// Replaces the box's text; false when the box does not take typing.
[[nodiscard]] bool Type(TextBox& box, const std::string& text);
// Checks the box; false when it cannot be ticked.
[[nodiscard]] bool Tick(CheckBox& box);
// Runs the button's handler; false when the button cannot be pressed.
[[nodiscard]] bool Press(const Button& button, const std::function<void()>& click);

// Selects tab of a tab strip and tells its handler which tab was left.
void SelectTab(TabStrip& tabs, int tab, const std::function<void(std::int16_t)>& click);

// "shown" or "hidden": a done-mark as the user sees it.
std::string MarkText(const Picture& mark);

}  // namespace ombrelay::cli
