#include "ui/widget_factory.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "shell/controls.h"
#include "ui/digit_boxes.h"
#include "ui/done_mark.h"

namespace ombrelay {
namespace {

// A plain text box holds a number of a few digits; the hex boxes size themselves.
constexpr int kTextBoxWidth = 56;

template <typename Widget, typename... Arguments>
Widget* Named(const QString& name, Arguments... arguments) {
  auto* widget = new Widget(arguments...);
  widget->setObjectName(name);
  return widget;
}

}  // namespace

QLabel* WidgetFactory::MakeLabel(const Label& control, const QString& name) {
  auto* label = Named<QLabel>(name);
  bindings_.Bind(*label, control);
  return label;
}

QLabel* WidgetFactory::MakeParagraph(const Label& control, const QString& name) {
  QLabel* label = MakeLabel(control, name);
  label->setWordWrap(true);
  return label;
}

QLabel* WidgetFactory::MakeHeading(const Label& control, const QString& name) {
  QLabel* label = MakeParagraph(control, name);
  label->setAlignment(Qt::AlignBottom);
  // Grid layouts do not grow a row for a label that wraps: ask for both lines outright.
  label->setMinimumHeight(2 * label->fontMetrics().lineSpacing());
  return label;
}

QFrame* WidgetFactory::MakeLine(const Line& control, const QString& name, QWidget& parent) {
  auto* line = Named<QFrame>(name, &parent);
  bindings_.Bind(*line, control);
  return line;
}

QGroupBox* WidgetFactory::MakeFrame(const Frame& control, const QString& name) {
  auto* frame = Named<QGroupBox>(name);
  bindings_.Bind(*frame, control);
  return frame;
}

QPushButton* WidgetFactory::MakeButton(const Button& control, const QString& name, Handler click) {
  auto* button = Named<QPushButton>(name);
  bindings_.Bind(*button, control, std::move(click));
  return button;
}

QCheckBox* WidgetFactory::MakeCheckBox(CheckBox& control, const QString& name, Handler click) {
  auto* box = Named<QCheckBox>(name);
  bindings_.Bind(*box, control, std::move(click));
  return box;
}

QRadioButton* WidgetFactory::MakeOptionButton(OptionButton& control, const QString& name,
                                              Handler click) {
  auto* button = Named<QRadioButton>(name);
  bindings_.Bind(*button, control, std::move(click));
  return button;
}

QLineEdit* WidgetFactory::MakeTextBox(TextBox& control, const QString& name,
                                      TextBoxHandlers handlers) {
  auto* box = Named<QLineEdit>(name);
  box->setFixedWidth(kTextBoxWidth);
  bindings_.Bind(*box, control, std::move(handlers));
  return box;
}

QLineEdit* WidgetFactory::MakeHexBox(TextBox& control, const QString& name, int digits,
                                     TextBoxHandlers handlers) {
  auto* box = Named<DigitLineEdit>(name, digits);
  bindings_.Bind(*box, control, std::move(handlers));
  return box;
}

QPlainTextEdit* WidgetFactory::MakeHexArea(TextBox& control, const QString& name, int digitsPerLine,
                                           int lines) {
  auto* area = Named<DigitTextArea>(name, digitsPerLine, lines);
  bindings_.Bind(*area, control);
  return area;
}

DoneMark* WidgetFactory::MakeDoneMark(const Picture& control, const QString& name) {
  auto* mark = Named<DoneMark>(name);
  bindings_.Bind(*mark, control);
  return mark;
}

QString Indexed(const char* name, std::size_t index) {
  return QString::fromStdString(IndexedName(name, index));
}

}  // namespace ombrelay
