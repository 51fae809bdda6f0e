#include "app/progress_indicator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

namespace ombrelay {

ProgressIndicator::ProgressIndicator(QWidget* parent)
    : QWidget(parent), label_(new QLabel(this)), bar_(new QProgressBar(this)) {
  setObjectName("progress");
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(label_);
  row->addWidget(bar_);
  bar_->setTextVisible(false);
  bar_->setMaximumWidth(160);
  hide();
}

void ProgressIndicator::Show(const std::string& doing, int done, int total, float waitSeconds) {
  const bool waiting = waitSeconds >= kShownWaitSeconds;
  if (doing.empty() && !waiting) {
    hide();
    return;
  }
  QString text = QString::fromStdString(doing);
  if (total > 0) text += QStringLiteral(": %1 of %2").arg(done).arg(total);
  if (waiting) {
    const QString wait =
        QStringLiteral("waiting %1 s").arg(static_cast<double>(waitSeconds), 0, 'f', 1);
    text = text.isEmpty() ? wait.left(1).toUpper() + wait.mid(1) : text + ", " + wait;
  }
  label_->setText(text);
  // A count fills the bar; without one the bar only says that something goes on.
  bar_->setRange(0, total > 0 ? total : 0);
  bar_->setValue(total > 0 ? done : 0);
  show();
}

QString ProgressIndicator::Text() const {
  return isHidden() ? QString() : label_->text();
}

}  // namespace ombrelay
