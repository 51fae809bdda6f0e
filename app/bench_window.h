#pragma once
// The bench: the application that owns the bus. A simulated gauge of each family sits behind a
// SimHost, a RecordingHost over it is the host the panels talk to, and the plug-in's two panels
// fill the window, each in a tab. The tool bar chooses the gauge on the bus; one dock sets what
// the gauge measures, another shows the bus log; the Tools menu opens the plug-in's calculator.

#include <QMainWindow>
#include <array>
#include <memory>

#include "hosts/recording_host.h"
#include "hosts/sim_host.h"
#include "sim/clock.h"
#include "sim/family.h"
#include "sim/gauge.h"

class QComboBox;
class QPlainTextEdit;
class QTabWidget;

namespace ombrelay {

class BenchSourcesDock;
class PanelPlugin;
struct BenchOptions;

class BenchWindow : public QMainWindow {
 public:
  // The gauge of options' family on the bus, Sealed when asked, and options' panel shown.
  BenchWindow(PanelPlugin& plugin, const BenchOptions& options);

  RecordingHost& Bus() { return host_; }
  // The panel in the tab shown.
  QWidget& ShownPanel() const;
  // What the bench applies to the gauge on the bus.
  const sim::Measurements& Applied() const;

 private:
  void MakeGaugeChoice(sim::Family family);
  void MakeBusLog();
  void MakeSources(sim::Family family);
  void MakePanels(PanelPlugin& plugin, const BenchOptions& options);
  void MakeToolsMenu(PanelPlugin& plugin);
  // Puts the gauge of family on the bus and shows the panel anew, so that start-up runs again.
  void Attach(sim::Family family);
  sim::Gauge& GaugeOnTheBus() const;

  sim::RealClock clock_;
  std::array<std::unique_ptr<sim::Gauge>, 4> gauges_;
  SimHost simHost_;
  RecordingHost host_;
  QTabWidget* panels_ = nullptr;
  QComboBox* gaugeChoice_ = nullptr;
  QPlainTextEdit* busLog_ = nullptr;
  BenchSourcesDock* sources_ = nullptr;
};

}  // namespace ombrelay
