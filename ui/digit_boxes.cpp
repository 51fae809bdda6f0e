#include "ui/digit_boxes.h"

#include <QStyle>
#include <QStyleOptionFrame>
#include <QTextDocument>

namespace ombrelay {
namespace {

// Room for the text cursor after the last digit, which would otherwise push the text aside.
constexpr int kCursorRoom = 2;
// QLineEdit keeps this much space on either side of its text.
constexpr int kLineEditMargin = 2;
// The space a box keeps around its text, smaller than QPlainTextEdit's own.
constexpr int kAreaMargin = 2;

int DigitsWidth(const QFontMetrics& metrics, int digits) {
  return metrics.horizontalAdvance(QString(digits, u'D'));
}

}  // namespace

DigitLineEdit::DigitLineEdit(int digits) : digits_(digits) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize DigitLineEdit::sizeHint() const {
  QStyleOptionFrame option;
  initStyleOption(&option);
  const QMargins text = textMargins();
  const int width = DigitsWidth(fontMetrics(), digits_) + 2 * kLineEditMargin + text.left() +
                    text.right() + kCursorRoom;
  const QSize framed =
      style()->sizeFromContents(QStyle::CT_LineEdit, &option, QSize(width, 0), this);
  return {framed.width(), QLineEdit::sizeHint().height()};
}

DigitTextArea::DigitTextArea(int digitsPerLine, int lines)
    : digitsPerLine_(digitsPerLine), lines_(lines) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setWordWrapMode(QTextOption::WrapAnywhere);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // The tab key moves on to the next control, as in a one-line box.
  setTabChangesFocus(true);
  document()->setDocumentMargin(kAreaMargin);
}

QSize DigitTextArea::sizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  const int around = 2 * (kAreaMargin + frameWidth());
  return {DigitsWidth(metrics, digitsPerLine_) + around + kCursorRoom,
          lines_ * metrics.lineSpacing() + around};
}

}  // namespace ombrelay
