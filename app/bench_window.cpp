#include "app/bench_window.h"

#include <QComboBox>
#include <QDockWidget>
#include <QFontDatabase>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QToolBar>
#include <nlohmann/json.hpp>

#include "app/bench_options.h"
#include "app/bench_sources_dock.h"
#include "sim/sample_gauges.h"
#include "ui/plugin_interface.h"

namespace ombrelay {
namespace {

constexpr std::array kFamilies = {sim::Family::Keld, sim::Family::Quill, sim::Family::Morlin,
                                  sim::Family::KeldPlus};
// The bus log keeps the latest lines only: a scan adds dozens every two seconds.
constexpr int kBusLogLines = 5000;
constexpr int kBusLogHeight = 160;

std::size_t IndexOf(sim::Family family) {
  return static_cast<std::size_t>(family);
}

}  // namespace

BenchWindow::BenchWindow(PanelPlugin& plugin, const BenchOptions& options)
    : simHost_(clock_), host_(simHost_, [this] { return clock_.NowMs(); }) {
  for (const sim::Family each : kFamilies) {
    gauges_[IndexOf(each)] = sim::MakeSampleGauge(each, clock_);
    if (options.sealed) gauges_[IndexOf(each)]->SetSecurityMode(sim::SecurityMode::Sealed);
  }
  simHost_.Attach(gauges_[IndexOf(options.family)].get());

  MakeGaugeChoice(options.family);
  MakeSources(options.family);
  MakeBusLog();
  MakePanels(plugin, options);
  MakeToolsMenu(plugin);
}

void BenchWindow::MakePanels(PanelPlugin& plugin, const BenchOptions& options) {
  panels_ = new QTabWidget(this);
  panels_->setObjectName("panels");
  panels_->setDocumentMode(true);
  panels_->addTab(plugin.CreateCalibrationPanel(host_, panels_), "Calibration");
  panels_->addTab(plugin.CreateSecurityPanel(host_, panels_), "Security");
  panels_->setCurrentIndex(options.panel == BenchPanel::Security ? 1 : 0);
  setCentralWidget(panels_);
  // No other gauge while a start-up is talking to this one: each show of a panel starts one.
  gaugeChoice_->setEnabled(false);
  connect(panels_, &QTabWidget::currentChanged, this, [this] { gaugeChoice_->setEnabled(false); });
  for (int i = 0; i < panels_->count(); ++i)
    plugin.OnStartupFinished(panels_->widget(i), [this] { gaugeChoice_->setEnabled(true); });
}

void BenchWindow::MakeToolsMenu(PanelPlugin& plugin) {
  QMenu* tools = menuBar()->addMenu("&Tools");
  tools->addAction("SHA-1 &Calculator…", this, [this, &plugin] { plugin.ShowCalculator(this); });
}

QWidget& BenchWindow::ShownPanel() const {
  return *panels_->currentWidget();
}

void BenchWindow::MakeGaugeChoice(sim::Family family) {
  QToolBar* bar = addToolBar("Gauge");
  bar->setMovable(false);
  bar->addWidget(new QLabel("Simulated gauge: ", bar));
  gaugeChoice_ = new QComboBox(bar);
  for (const sim::Family each : kFamilies) {
    gaugeChoice_->addItem(QString::fromUtf8(sim::FamilyName(each)).toUpper(),
                          static_cast<int>(each));
  }
  gaugeChoice_->setCurrentIndex(static_cast<int>(IndexOf(family)));
  bar->addWidget(gaugeChoice_);
  connect(gaugeChoice_, &QComboBox::activated, this, [this](int index) {
    Attach(static_cast<sim::Family>(gaugeChoice_->itemData(index).toInt()));
  });
}

void BenchWindow::MakeBusLog() {
  auto* dock = new QDockWidget("Bus log", this);
  dock->setObjectName("busLog");
  dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
  busLog_ = new QPlainTextEdit(dock);
  busLog_->setReadOnly(true);
  busLog_->setLineWrapMode(QPlainTextEdit::NoWrap);
  busLog_->setMaximumBlockCount(kBusLogLines);
  busLog_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  busLog_->setMinimumHeight(kBusLogHeight);
  dock->setWidget(busLog_);
  addDockWidget(Qt::BottomDockWidgetArea, dock);
  host_.onOperation = [this](const BusOperation& operation) {
    busLog_->appendPlainText(QString::fromStdString(ToJson(operation).dump()));
    // The dock is the record: the host need not keep a second one that grows for ever.
    host_.Clear();
  };
}

void BenchWindow::MakeSources(sim::Family family) {
  sources_ = new BenchSourcesDock(this);
  sources_->SetGauge(*gauges_[IndexOf(family)]);
  addDockWidget(Qt::RightDockWidgetArea, sources_);
}

const sim::Measurements& BenchWindow::Applied() const {
  return GaugeOnTheBus().AppliedMeasurements();
}

sim::Gauge& BenchWindow::GaugeOnTheBus() const {
  return *gauges_[static_cast<std::size_t>(gaugeChoice_->currentIndex())];
}

void BenchWindow::Attach(sim::Family family) {
  gaugeChoice_->setEnabled(false);
  simHost_.Attach(gauges_[IndexOf(family)].get());
  sources_->SetGauge(*gauges_[IndexOf(family)]);
  ShownPanel().hide();
  ShownPanel().show();
}

}  // namespace ombrelay
