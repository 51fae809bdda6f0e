#pragma once
// The calibration panel as a Qt widget: a view of NBCal's controls. The tab strip is on top,
// the two pages and the grids stand where the controls' twips put them, and every user action
// goes to NBCal's handlers. Start-up runs each time the panel is shown.

#include <QWidget>

#include "panel/nbcal.h"
#include "ui/control_bindings.h"

namespace ombrelay {

class Host;
class Platform;

class CalibrationPanel : public QWidget {
  Q_OBJECT

 public:
  CalibrationPanel(Host& host, Platform& platform, QWidget* parent = nullptr);
  ~CalibrationPanel() override;

  QSize sizeHint() const override;
  // The control behind the view: the host reaches its members, such as Caption and
  // TargetAddress, here.
  NBCal& Control() { return nbcal_; }
  // Brings every widget up to date with its control.
  void Refresh() { bindings_.Refresh(); }

 signals:
  // NBCal's start-up after a show has run to its end, whichever way it ended.
  void startupFinished();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void MakeTabStrip();
  // A grid and its heading, first at top twips, until start-up places them.
  void MakeGrid(Label& heading, const char* headingName, Grid& grid, const char* gridName, int top);
  void MakeStatusLine();
  void RunStartup();
  void FocusChanged(QWidget* now);

  NBCal nbcal_;
  ControlBindings bindings_;
  bool focusInside_ = false;
};

}  // namespace ombrelay
