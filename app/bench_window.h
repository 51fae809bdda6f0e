#pragma once
// The bench: the application that owns the bus. A simulated gauge of each family sits behind a
// SimHost, a RecordingHost over it is the host the panel talks to, and the panel from the
// plug-in fills the window. The tool bar chooses the gauge on the bus; one dock sets what the
// gauge measures, another shows the bus log.

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

namespace ombrelay {

class BenchSourcesDock;
class PanelPlugin;

class BenchWindow : public QMainWindow {
 public:
  BenchWindow(PanelPlugin& plugin, sim::Family family);

  RecordingHost& Bus() { return host_; }
  // What the bench applies to the gauge on the bus.
  const sim::Measurements& Applied() const;

 private:
  void MakeGaugeChoice(sim::Family family);
  void MakeBusLog();
  void MakeSources(sim::Family family);
  // Puts the gauge of family on the bus and shows the panel anew, so that start-up runs again.
  void Attach(sim::Family family);
  sim::Gauge& GaugeOnTheBus() const;

  sim::RealClock clock_;
  std::array<std::unique_ptr<sim::Gauge>, 4> gauges_;
  SimHost simHost_;
  RecordingHost host_;
  QWidget* panel_ = nullptr;
  QComboBox* gaugeChoice_ = nullptr;
  QPlainTextEdit* busLog_ = nullptr;
  BenchSourcesDock* sources_ = nullptr;
};

}  // namespace ombrelay
