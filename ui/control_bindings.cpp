#include "ui/control_bindings.h"

#include "panel/run_event.h"
#include "ui/grid_binder.h"
#include "ui/static_binders.h"

namespace ombrelay {

void ControlBindings::Bind(QLabel& widget, const Label& control) {
  bindings_.push_back(std::make_unique<LabelBinder>(widget, control));
}

void ControlBindings::Bind(QFrame& widget, const Line& control) {
  bindings_.push_back(std::make_unique<LineBinder>(widget, control));
}

void ControlBindings::Bind(QGroupBox& widget, const Frame& control) {
  bindings_.push_back(std::make_unique<FrameBinder>(widget, control));
}

void ControlBindings::Bind(QWidget& widget, const Picture& control) {
  bindings_.push_back(std::make_unique<PictureBinder>(widget, control));
}

void ControlBindings::Bind(QTableWidget& widget, const Grid& control) {
  bindings_.push_back(std::make_unique<GridBinder>(widget, control));
}

void ControlBindings::Bind(QPushButton& widget, const Button& control, Handler click) {
  bindings_.push_back(std::make_unique<ButtonBinder>(widget, control, Runner(), std::move(click)));
}

void ControlBindings::Bind(QCheckBox& widget, CheckBox& control, Handler click) {
  bindings_.push_back(
      std::make_unique<CheckBoxBinder>(widget, control, Runner(), std::move(click)));
}

void ControlBindings::Bind(QRadioButton& widget, OptionButton& control, Handler click) {
  bindings_.push_back(
      std::make_unique<OptionButtonBinder>(widget, control, Runner(), std::move(click)));
}

void ControlBindings::Bind(QLineEdit& widget, TextBox& control, TextBoxHandlers handlers) {
  bindings_.push_back(
      std::make_unique<TextBoxBinder>(widget, control, Runner(), std::move(handlers)));
}

void ControlBindings::Bind(QPlainTextEdit& widget, TextBox& control) {
  bindings_.push_back(std::make_unique<TextAreaBinder>(widget, control));
}

void ControlBindings::Bind(QTabBar& widget, TabStrip& control,
                           std::function<void(std::int16_t previousTab)> click) {
  bindings_.push_back(
      std::make_unique<TabStripBinder>(widget, control, Runner(), std::move(click)));
}

void ControlBindings::Place(QWidget& widget, const Control& control) {
  bindings_.push_back(std::make_unique<PlacementBinder>(widget, control));
}

void ControlBindings::Add(std::unique_ptr<Binding> binding) {
  bindings_.push_back(std::move(binding));
}

void ControlBindings::Refresh() {
  for (const auto& binding : bindings_)
    binding->Refresh();
}

void ControlBindings::Run(const Handler& handler) {
  if (handler) RunEvent(handler);
  Refresh();
}

EventRunner ControlBindings::Runner() {
  return [this](const Handler& handler) { Run(handler); };
}

}  // namespace ombrelay
