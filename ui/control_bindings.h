#pragma once
// The bindings of one panel: every control to its widget, refreshed together, and the one way
// in which the view runs the panel's handlers.

#include <cstdint>
#include <memory>
#include <vector>

#include "ui/binding.h"
#include "ui/input_binders.h"

class QCheckBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTabBar;
class QTableWidget;
class QWidget;

namespace ombrelay {

class Grid;
struct Button;
struct CheckBox;
struct Control;
struct Frame;
struct Label;
struct Line;
struct OptionButton;
struct Picture;
struct TabStrip;
struct TextBox;

class ControlBindings {
 public:
  ControlBindings() = default;
  ControlBindings(const ControlBindings&) = delete;
  ControlBindings& operator=(const ControlBindings&) = delete;

  void Bind(QLabel& widget, const Label& control);
  void Bind(QFrame& widget, const Line& control);
  void Bind(QGroupBox& widget, const Frame& control);
  void Bind(QWidget& widget, const Picture& control);
  void Bind(QTableWidget& widget, const Grid& control);
  void Bind(QPushButton& widget, const Button& control, Handler click = {});
  void Bind(QCheckBox& widget, CheckBox& control, Handler click = {});
  void Bind(QRadioButton& widget, OptionButton& control, Handler click = {});
  void Bind(QLineEdit& widget, TextBox& control, TextBoxHandlers handlers = {});
  void Bind(QPlainTextEdit& widget, TextBox& control);
  void Bind(QTabBar& widget, TabStrip& control,
            std::function<void(std::int16_t previousTab)> click = {});
  // Keeps the widget where the control's twips put it, besides what its Bind does.
  void Place(QWidget& widget, const Control& control);
  // A binding of the view's own, such as a form's window, refreshed with the rest.
  void Add(std::unique_ptr<Binding> binding);

  // Pushes every control's state into its widget.
  void Refresh();
  // Runs a handler as an event: a run-time error it leaves untrapped becomes an error box, and
  // the view catches up with whatever the handler changed.
  void Run(const Handler& handler);

 private:
  EventRunner Runner();

  std::vector<std::unique_ptr<Binding>> bindings_;
};

}  // namespace ombrelay
