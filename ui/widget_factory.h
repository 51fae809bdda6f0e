#pragma once
// Makes the widgets of a panel: each is named after its control, so that it can be found by
// that name, and bound to it from the start.

#include <QString>

#include "ui/control_bindings.h"

class QCheckBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
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
  // A rule that stands where its twips put it in parent.
  QFrame* MakeLine(const Line& control, const QString& name, QWidget& parent);
  QGroupBox* MakeFrame(const Frame& control, const QString& name);
  QPushButton* MakeButton(const Button& control, const QString& name, Handler click = {});
  QCheckBox* MakeCheckBox(CheckBox& control, const QString& name, Handler click = {});
  QRadioButton* MakeOptionButton(OptionButton& control, const QString& name, Handler click = {});
  QLineEdit* MakeTextBox(TextBox& control, const QString& name, TextBoxHandlers handlers = {});
  // Boxes as wide as the hex digits they hold: on one line, or wrapped over lines.
  QLineEdit* MakeHexBox(TextBox& control, const QString& name, int digits,
                        TextBoxHandlers handlers = {});
  QPlainTextEdit* MakeHexArea(TextBox& control, const QString& name, int digitsPerLine, int lines);
  DoneMark* MakeDoneMark(const Picture& control, const QString& name);
  // Keeps a widget already made where its control's twips put it.
  void Place(QWidget& widget, const Control& control) { bindings_.Place(widget, control); }

 private:
  ControlBindings& bindings_;
};

// The name of a member of a control array, as "txtVoltage(0)".
QString Indexed(const char* name, std::size_t index);

}  // namespace ombrelay
