#pragma once
// What the plug-in's panels share: the bindings of their controls, and a start-up that runs each
// time the panel is shown.

#include <QWidget>

#include "ui/control_bindings.h"

namespace ombrelay {

class PanelWidget : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;

  // Brings every widget up to date with its control.
  void Refresh() { bindings_.Refresh(); }

 signals:
  // The panel's start-up after a show has run to its end, whichever way it ended.
  void startupFinished();

 protected:
  void showEvent(QShowEvent* event) override;
  // The control's own start-up, run as an event of the panel.
  virtual void Startup() = 0;

  ControlBindings bindings_;

 private:
  void RunStartup();
};

}  // namespace ombrelay
