#include "ui/binding.h"

#include <QApplication>
#include <QFontDatabase>
#include <QWidget>
#include <cmath>

#include "shell/controls.h"

namespace ombrelay {
namespace {

constexpr double kTwipsPerPixel = 15.0;

QColor ToQColor(std::uint32_t rgb) {
  return QColor::fromRgb(static_cast<QRgb>(rgb));
}

// Sets role to colour in each of groups, if it differs anywhere.
void SetColour(QWidget& widget, QPalette::ColorRole role, const QColor& colour,
               std::initializer_list<QPalette::ColorGroup> groups) {
  QPalette palette = widget.palette();
  bool changed = false;
  for (const QPalette::ColorGroup group : groups) {
    if (palette.color(group, role) == colour) continue;
    palette.setColor(group, role, colour);
    changed = true;
  }
  if (changed) widget.setPalette(palette);
}

void SyncColours(QWidget& widget, const Control& control) {
  // Disabled text keeps the view's grey, as a disabled control shows no colour of its own.
  SetColour(widget, widget.foregroundRole(), ToQColor(control.ForeColor),
            {QPalette::Active, QPalette::Inactive});
  if (!control.BackColor) return;
  SetColour(widget, widget.backgroundRole(), ToQColor(*control.BackColor),
            {QPalette::Active, QPalette::Inactive, QPalette::Disabled});
  // A label paints no background of its own unless told to.
  if (!widget.autoFillBackground()) widget.setAutoFillBackground(true);
}

// The control's font over the widget's own. A family the system lacks falls back to one of its
// kind: Courier, the panels' one fixed-pitch family, to the system's fixed font, so that hex
// digits stay in columns.
QFont ControlFont(const QWidget& widget, const Control& control) {
  QFont font = widget.font();
  if (!control.FontName.empty()) {
    const QString family = QString::fromStdString(control.FontName);
    const bool fixedPitch = family.startsWith(QLatin1String("Courier"), Qt::CaseInsensitive);
    const QFont fallback =
        fixedPitch ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QApplication::font();
    font.setFamilies({family, fallback.family()});
    font.setStyleHint(fixedPitch ? QFont::TypeWriter : QFont::SansSerif);
  }
  if (control.FontSize > 0) font.setPointSizeF(control.FontSize);
  font.setBold(control.FontBold);
  return font;
}

}  // namespace

void SyncControl(QWidget& widget, const Control& control) {
  // The widget's own flags, not what its parents make of them: a control on a hidden page still
  // counts as visible.
  if (widget.testAttribute(Qt::WA_ForceDisabled) == control.Enabled) {
    widget.setEnabled(control.Enabled);
  }
  if (widget.isHidden() == control.Visible) widget.setVisible(control.Visible);
  const QString tip = QString::fromStdString(control.ToolTipText);
  if (widget.toolTip() != tip) widget.setToolTip(tip);
  SyncColours(widget, control);
  const QFont font = ControlFont(widget, control);
  if (widget.font() != font) widget.setFont(font);
}

QString DisplayText(const std::string& text) {
  return QString::fromStdString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

int TwipsToPixels(int twips) {
  return static_cast<int>(std::lround(twips / kTwipsPerPixel));
}

}  // namespace ombrelay
