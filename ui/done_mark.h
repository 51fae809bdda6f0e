#pragma once
// The mark that shows a calibration has succeeded: a green tick.

#include <QWidget>

namespace ombrelay {

class DoneMark : public QWidget {
 public:
  explicit DoneMark(QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace ombrelay
