#pragma once
// The bench: the application that owns the bus. A simulated gauge of each family sits behind a
// SimHost, and the i2c buses of the machine behind an I2cDevHost each; a RecordingHost over the
// one chosen is the host the panels talk to, and the plug-in's two panels fill the window, each in
// a tab. The tool bar chooses the gauge on the bus; one dock sets what a simulated gauge measures,
// another shows the bus log, a third plots what the calibration panel measures; the Tools menu
// opens the plug-in's calculator.

#include <QMainWindow>
#include <array>
#include <memory>

#include "app/calibration_reports.h"
#include "hosts/i2c_dev_host.h"
#include "hosts/recording_host.h"
#include "hosts/sim_host.h"
#include "sim/clock.h"
#include "sim/family.h"
#include "sim/gauge.h"

class QAction;
class QComboBox;
class QTabWidget;

namespace ombrelay {

class BenchSourcesDock;
class PlotsDock;
class PanelPlugin;
struct BenchOptions;

class BenchWindow : public QMainWindow {
 public:
  // The gauge of options' family on the bus, Sealed when asked, and options' panel shown.
  BenchWindow(PanelPlugin& plugin, const BenchOptions& options);

  RecordingHost& Bus() { return host_; }
  // Puts the real bus at path on in place of the gauge there was, without showing the panel anew.
  // False, with the reason in error, when the bus does not open.
  bool AttachBus(const QString& path, QString& error);
  // The panel in the tab shown.
  QWidget& ShownPanel() const;
  PlotsDock& Plots() { return *plots_; }
  // The reports of the calibrations run so far.
  const CalibrationReports& Reports() const { return reports_; }
  // What the bench applies to the gauge on the bus.
  const sim::Measurements& Applied() const;

 private:
  void MakeGaugeChoice(sim::Family family);
  // Puts the gauge or bus of the chooser's item on the bus and shows the panel anew.
  void Choose(int index);
  void MakeBusLog(PanelPlugin& plugin);
  void MakeSources(sim::Family family);
  void MakePanels(PanelPlugin& plugin, const BenchOptions& options);
  void MakePlots();
  void MakeToolsMenu(PanelPlugin& plugin);
  void MakeReportsMenu(PanelPlugin& plugin);
  // The status bar's sign of what a long operation of the panels is doing.
  void MakeProgress(PanelPlugin& plugin);
  void SaveReports();
  void AttachSimulated(sim::Family family);

  sim::RealClock clock_;
  std::array<std::unique_ptr<sim::Gauge>, 4> gauges_;
  SimHost simHost_;
  std::unique_ptr<I2cDevHost> bus_;  // while a real bus is chosen
  RecordingHost host_;
  sim::Family family_;  // the simulated gauge last chosen
  bool unattended_;
  bool pec_;        // on every real bus
  int chosen_ = 0;  // the chooser's item on the bus
  QTabWidget* panels_ = nullptr;
  QComboBox* gaugeChoice_ = nullptr;
  BenchSourcesDock* sources_ = nullptr;
  PlotsDock* plots_ = nullptr;
  CalibrationReports reports_;
  QAction* saveReports_ = nullptr;
};

}  // namespace ombrelay
