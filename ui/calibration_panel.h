#pragma once
// The calibration panel as a Qt widget: a view of NBCal's controls. The tab strip is on top,
// the two pages and the grids stand where the controls' twips put them, and every user action
// goes to NBCal's handlers. Start-up runs each time the panel is shown.

#include <functional>

#include "hosts/recording_host.h"
#include "panel/nbcal.h"
#include "report/calibration_recording.h"
#include "report/message_recording_platform.h"
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
  // Called with the report of each calibration its buttons run.
  void OnCalibrationReport(std::function<void(const CalibrationReport&)> callback) {
    onReport_ = std::move(callback);
  }

 private:
  // Runs the calibration of the button clicked, recording its bus operations and boxes.
  void Press(CalibrationKind kind);
  void Startup() override { nbcal_.UserControl_Show(); }
  void MakeTabStrip();
  // A grid and its heading, first at top twips, until start-up places them.
  void MakeGrid(Label& heading, const char* headingName, Grid& grid, const char* gridName, int top);
  void MakeStatusLine();
  void FocusChanged(QWidget* now);

  // Between the panel and its host and platform: what a press does, kept for its report. Nothing
  // is kept between presses.
  Host& host_;
  Platform& platform_;
  RecordingHost bus_;
  MessageRecordingPlatform boxes_;
  bool pressing_ = false;
  NBCal nbcal_;
  CalibrationRecorder recorder_{bus_.Operations(), boxes_.Messages()};
  std::function<void(const CalibrationReport&)> onReport_;
  bool focusInside_ = false;
};

}  // namespace ombrelay
