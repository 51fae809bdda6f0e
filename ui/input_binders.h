#pragma once
// Binders of controls the user acts on. What the user does goes into the control first, then
// the control's handler runs as an event of the panel.

#include <QObject>
#include <cstdint>
#include <memory>

#include "ui/binding.h"

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTabBar;

namespace ombrelay {

struct Button;
struct CheckBox;
struct OptionButton;
struct TabStrip;
struct TextBox;

class ButtonBinder : public Binding {
 public:
  ButtonBinder(QPushButton& widget, const Button& control, EventRunner run, Handler click);
  void Refresh() override;

 private:
  QPushButton& widget_;
  const Button& control_;
};

class CheckBoxBinder : public Binding {
 public:
  CheckBoxBinder(QCheckBox& widget, CheckBox& control, EventRunner run, Handler click);
  void Refresh() override;

 private:
  QCheckBox& widget_;
  CheckBox& control_;
};

// A click turns the button on in its control before the handler runs; the handler turns the
// others of its group off.
class OptionButtonBinder : public Binding {
 public:
  OptionButtonBinder(QRadioButton& widget, OptionButton& control, EventRunner run, Handler click);
  void Refresh() override;

 private:
  QRadioButton& widget_;
  OptionButton& control_;
};

struct TextBoxHandlers {
  Handler change = {};
  // Runs when the focus leaves the box for another control of the window; setting cancel
  // keeps the focus in the box.
  std::function<void(bool& cancel)> validate = {};
};

class TextBoxBinder : public Binding {
 public:
  TextBoxBinder(QLineEdit& widget, TextBox& control, EventRunner run, TextBoxHandlers handlers);
  ~TextBoxBinder() override;
  void Refresh() override;

 private:
  // The cursor and selection as the control keeps them: start, and length 0 for a bare cursor.
  void PullSelection();
  void Validate();

  QLineEdit& widget_;
  TextBox& control_;
  EventRunner run_;
  TextBoxHandlers handlers_;
  std::unique_ptr<QObject> focusWatch_;
  bool pushing_ = false;  // set while Refresh changes the widget: its signals are not the user's
};

// A text box whose text wraps over several lines: for boxes with no MaxLength and no handlers,
// whose selection the panel leaves alone. What the user types goes into the control.
class TextAreaBinder : public Binding {
 public:
  TextAreaBinder(QPlainTextEdit& widget, TextBox& control);
  void Refresh() override;

 private:
  QPlainTextEdit& widget_;
  TextBox& control_;
  bool pushing_ = false;
};

class TabStripBinder : public Binding {
 public:
  // click gets the tab that was left.
  TabStripBinder(QTabBar& widget, TabStrip& control, EventRunner run,
                 std::function<void(std::int16_t previousTab)> click);
  void Refresh() override;

 private:
  QTabBar& widget_;
  TabStrip& control_;
  bool pushing_ = false;
};

}  // namespace ombrelay
