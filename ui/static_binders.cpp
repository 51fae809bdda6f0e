#include "ui/static_binders.h"

#include <QGroupBox>
#include <QLabel>

#include "shell/controls.h"

namespace ombrelay {

LabelBinder::LabelBinder(QLabel& widget, const Label& control)
    : widget_(widget), control_(control) {
  // Captions are text, never markup.
  widget_.setTextFormat(Qt::PlainText);
}

void LabelBinder::Refresh() {
  SyncControl(widget_, control_);
  const QString caption = DisplayText(control_.Caption);
  if (widget_.text() != caption) widget_.setText(caption);
}

void FrameBinder::Refresh() {
  SyncControl(widget_, control_);
  const QString caption = DisplayText(control_.Caption);
  if (widget_.title() != caption) widget_.setTitle(caption);
}

void PictureBinder::Refresh() {
  SyncControl(widget_, control_);
}

void PlacementBinder::Refresh() {
  // Until the panel places the control, it stays where the view laid it out.
  if (control_.Top == 0 && control_.Left == 0 && control_.Width == 0 && control_.Height == 0) {
    return;
  }
  const QPoint position(TwipsToPixels(control_.Left), TwipsToPixels(control_.Top));
  const bool sized = control_.Width > 0 && control_.Height > 0;
  const QSize size = sized ? QSize(TwipsToPixels(control_.Width), TwipsToPixels(control_.Height))
                           : widget_.sizeHint();
  const QRect geometry(position, size);
  if (widget_.geometry() != geometry) widget_.setGeometry(geometry);
}

}  // namespace ombrelay
