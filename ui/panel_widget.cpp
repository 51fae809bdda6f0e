#include "ui/panel_widget.h"

#include <QShowEvent>
#include <QTimer>

namespace ombrelay {

void PanelWidget::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // A window coming back from the task bar is not the panel being shown anew.
  if (event->spontaneous()) return;
  // Let the window appear before start-up talks to the gauge and shows its boxes.
  QTimer::singleShot(0, this, &PanelWidget::RunStartup);
}

void PanelWidget::RunStartup() {
  bindings_.Run([this] { Startup(); });
  emit startupFinished();
}

}  // namespace ombrelay
