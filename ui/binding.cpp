#include "ui/binding.h"

#include <QWidget>
#include <cmath>

#include "shell/controls.h"

namespace ombrelay {
namespace {

constexpr double kTwipsPerPixel = 15.0;

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
}

QString DisplayText(const std::string& text) {
  return QString::fromStdString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

int TwipsToPixels(int twips) {
  return static_cast<int>(std::lround(twips / kTwipsPerPixel));
}

}  // namespace ombrelay
