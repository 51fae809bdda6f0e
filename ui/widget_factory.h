#pragma once
// Makes the widgets of a panel: each is named after its control, so that it can be found by
// that name, and bound to it from the start.

#include <QString>

#include "ui/control_bindings.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace ombrelay {

class DoneMark;

class WidgetFactory {
 public:
  explicit WidgetFactory(ControlBindings& bindings) : bindings_(bindings) {}

  QLabel* MakeLabel(const Label& control, const QString& name);
  // A label whose caption is a paragraph.
  QLabel* MakeParagraph(const Label& control, const QString& name);
  // A column heading over text boxes, room for two lines.
  QLabel* MakeHeading(const Label& control, const QString& name);
  QGroupBox* MakeFrame(const Frame& control, const QString& name);
  QPushButton* MakeButton(const Button& control, const QString& name, Handler click = {});
  QCheckBox* MakeCheckBox(CheckBox& control, const QString& name, Handler click = {});
  QLineEdit* MakeTextBox(TextBox& control, const QString& name, TextBoxHandlers handlers = {});
  DoneMark* MakeDoneMark(const Picture& control, const QString& name);

 private:
  ControlBindings& bindings_;
};

// The name of a member of a control array, as "txtVoltage(0)".
QString Indexed(const char* name, std::size_t index);

}  // namespace ombrelay
