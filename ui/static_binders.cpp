#include "ui/static_binders.h"

#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <algorithm>
#include <cstdlib>

#include "shell/controls.h"

namespace ombrelay {
namespace {

Qt::Alignment ToQtAlignment(TextAlignment alignment) {
  switch (alignment) {
    case TextAlignment::Right:
      return Qt::AlignRight;
    case TextAlignment::Centre:
      return Qt::AlignHCenter;
    case TextAlignment::Left:
      break;
  }
  return Qt::AlignLeft;
}

}  // namespace

LabelBinder::LabelBinder(QLabel& widget, const Label& control)
    : widget_(widget), control_(control) {
  // Captions are text, never markup.
  widget_.setTextFormat(Qt::PlainText);
}

void LabelBinder::Refresh() {
  SyncControl(widget_, control_);
  const QString caption = DisplayText(control_.Caption);
  if (widget_.text() != caption) widget_.setText(caption);
  // Across is the control's to say, up and down the view's.
  const Qt::Alignment alignment =
      ToQtAlignment(control_.Alignment) | (widget_.alignment() & Qt::AlignVertical_Mask);
  if (widget_.alignment() != alignment) widget_.setAlignment(alignment);
}

LineBinder::LineBinder(QFrame& widget, const Line& control) : widget_(widget), control_(control) {
  widget_.setFrameStyle(QFrame::HLine | QFrame::Plain);
  widget_.setLineWidth(1);
}

void LineBinder::Refresh() {
  SyncControl(widget_, control_);
  const int left = std::min(control_.X1, control_.X2);
  const int width = std::abs(control_.X2 - control_.X1);
  const QRect geometry(TwipsToPixels(left), TwipsToPixels(control_.Y1), TwipsToPixels(width), 1);
  if (widget_.geometry() != geometry) widget_.setGeometry(geometry);
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
