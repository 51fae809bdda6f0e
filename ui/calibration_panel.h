#pragma once
// The calibration panel as a Qt widget: a view of NBCal's controls. The tab strip is on top,
// the two pages and the grids stand where the controls' twips put them, and every user action
// goes to NBCal's handlers. Start-up runs each time the panel is shown.

#include "panel/nbcal.h"
#include "ui/panel_widget.h"

namespace ombrelay {

class Host;
class Platform;

class CalibrationPanel : public PanelWidget {
  Q_OBJECT

 public:
  CalibrationPanel(Host& host, Platform& platform, QWidget* parent = nullptr);
  ~CalibrationPanel() override;

  QSize sizeHint() const override;
  // The control behind the view: the host reaches its members, such as Caption and
  // TargetAddress, here.
  NBCal& Control() { return nbcal_; }

 private:
  void Startup() override { nbcal_.UserControl_Show(); }
  void MakeTabStrip();
  // A grid and its heading, first at top twips, until start-up places them.
  void MakeGrid(Label& heading, const char* headingName, Grid& grid, const char* gridName, int top);
  void MakeStatusLine();
  void FocusChanged(QWidget* now);

  NBCal nbcal_;
  bool focusInside_ = false;
};

}  // namespace ombrelay
