#include "ui/done_mark.h"

#include <QPainter>
#include <QPainterPath>

namespace ombrelay {
namespace {

constexpr int kSide = 24;
const QColor kGreen(0x2E, 0x9E, 0x3A);

}  // namespace

DoneMark::DoneMark(QWidget* parent) : QWidget(parent) {
  QSizePolicy policy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  // Hidden until its calibration succeeds: its room is kept, so that nothing on the page moves
  // when it shows.
  policy.setRetainSizeWhenHidden(true);
  setSizePolicy(policy);
}

QSize DoneMark::sizeHint() const {
  return {kSide, kSide};
}

void DoneMark::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF box = QRectF(rect()).adjusted(1, 1, -1, -1);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kGreen);
  painter.drawRoundedRect(box, 4, 4);

  QPainterPath tick;
  tick.moveTo(box.left() + box.width() * 0.22, box.top() + box.height() * 0.52);
  tick.lineTo(box.left() + box.width() * 0.42, box.top() + box.height() * 0.72);
  tick.lineTo(box.left() + box.width() * 0.78, box.top() + box.height() * 0.30);
  painter.setPen(QPen(Qt::white, box.width() * 0.12, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(tick);
}

}  // namespace ombrelay
