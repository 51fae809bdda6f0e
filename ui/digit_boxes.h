#pragma once
// Text boxes as wide as a number of the hex digits they hold, in whatever font they are given:
// a key or a digest shows whole, without scrolling.

#include <QLineEdit>
#include <QPlainTextEdit>

namespace ombrelay {

class DigitLineEdit : public QLineEdit {
 public:
  explicit DigitLineEdit(int digits);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 private:
  int digits_;
};

// Wraps after digitsPerLine digits, wherever that falls, and shows lines of them.
class DigitTextArea : public QPlainTextEdit {
 public:
  DigitTextArea(int digitsPerLine, int lines);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 private:
  int digitsPerLine_;
  int lines_;
};

}  // namespace ombrelay
