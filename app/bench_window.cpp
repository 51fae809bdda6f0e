#include "app/bench_window.h"

#include <QComboBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <iostream>

#include "app/bench_options.h"
#include "app/bench_sources_dock.h"
#include "app/bus_log_dock.h"
#include "app/dataflash_menu.h"
#include "app/plots_dock.h"
#include "app/progress_indicator.h"
#include "hosts/i2c_buses.h"
#include "sim/sample_gauges.h"
#include "ui/plugin_interface.h"

namespace ombrelay {
namespace {

constexpr std::array kFamilies = {sim::Family::Keld, sim::Family::Quill, sim::Family::Morlin,
                                  sim::Family::KeldPlus};

std::size_t IndexOf(sim::Family family) {
  return static_cast<std::size_t>(family);
}

}  // namespace

BenchWindow::BenchWindow(PanelPlugin& plugin, const BenchOptions& options)
    : simHost_(clock_),
      host_(simHost_, [this] { return clock_.NowMs(); }),
      family_(options.family),
      unattended_(!options.screenshot.isEmpty()),
      pec_(options.pec) {
  for (const sim::Family each : kFamilies) {
    gauges_[IndexOf(each)] = sim::MakeSampleGauge(each, clock_);
    if (options.sealed) gauges_[IndexOf(each)]->SetSecurityMode(sim::SecurityMode::Sealed);
  }
  simHost_.Attach(gauges_[IndexOf(options.family)].get());

  MakeGaugeChoice(options.family);
  MakeSources(options.family);
  MakeBusLog(plugin);
  MakePanels(plugin, options);
  MakePlots();
  MakeToolsMenu(plugin);
  MakeReportsMenu(plugin);
  MakeProgress(plugin);
  AddDataflashMenu(*this, plugin, host_);
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

void BenchWindow::MakePlots() {
  plots_ = new PlotsDock(this);
  plots_->Watch(*panels_->widget(0));
  addDockWidget(Qt::BottomDockWidgetArea, plots_);
  // A tab beside the bus log, which stays in front.
  if (auto* busLog = findChild<QDockWidget*>("busLog")) {
    tabifyDockWidget(busLog, plots_);
    busLog->raise();
  }
}

void BenchWindow::MakeReportsMenu(PanelPlugin& plugin) {
  QMenu* reports = menuBar()->addMenu("&Reports");
  saveReports_ = reports->addAction("&Save Calibration Reports…", this, [this] { SaveReports(); });
  saveReports_->setEnabled(false);
  plugin.OnCalibrationReport(panels_->widget(0), [this](const std::string& json) {
    reports_.Add(json);
    saveReports_->setEnabled(true);
    statusBar()->showMessage(
        QStringLiteral("%1 calibration report(s) kept: Reports > Save Calibration Reports… writes "
                       "them as JSON and PDF.")
            .arg(reports_.Count()));
  });
}

void BenchWindow::MakeProgress(PanelPlugin& plugin) {
  auto* progress = new ProgressIndicator(this);
  statusBar()->addPermanentWidget(progress);
  plugin.OnProgress([progress](const std::string& doing, int done, int total, float waitSeconds) {
    progress->Show(doing, done, total, waitSeconds);
  });
}

void BenchWindow::SaveReports() {
  const QString file = QFileDialog::getSaveFileName(
      this, "Save calibration reports", "calibration-report.json", "JSON files (*.json)");
  if (file.isEmpty()) return;
  QString error;
  if (!reports_.Save(file, error)) {
    QMessageBox::warning(this, "Save Calibration Reports", error);
    return;
  }
  statusBar()->showMessage(
      QStringLiteral("Saved %1 and %2").arg(file, CalibrationReports::PdfBeside(file)));
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
  bar->addWidget(new QLabel("Gauge: ", bar));
  gaugeChoice_ = new QComboBox(bar);
  gaugeChoice_->setObjectName("gaugeChoice");
  for (const sim::Family each : kFamilies) {
    gaugeChoice_->addItem(QString::fromUtf8(sim::FamilyName(each)).toUpper() + " (simulated)",
                          static_cast<int>(each));
  }
  // A bus's item holds its path, a simulated gauge's its family.
  for (const I2cBus& bus : ListI2cBuses()) {
    gaugeChoice_->addItem(QString::fromStdString(bus.path + "  " + bus.name),
                          QString::fromStdString(bus.path));
  }
  chosen_ = static_cast<int>(IndexOf(family));
  gaugeChoice_->setCurrentIndex(chosen_);
  bar->addWidget(gaugeChoice_);
  connect(gaugeChoice_, &QComboBox::activated, this, &BenchWindow::Choose);
}

void BenchWindow::Choose(int index) {
  const QVariant item = gaugeChoice_->itemData(index);
  if (item.typeId() == QMetaType::QString) {
    QString error;
    if (!AttachBus(item.toString(), error)) {
      QMessageBox::critical(this, "Bus", error);
      gaugeChoice_->setCurrentIndex(chosen_);
      return;
    }
  } else {
    AttachSimulated(static_cast<sim::Family>(item.toInt()));
  }
  chosen_ = index;
  gaugeChoice_->setEnabled(false);
  ShownPanel().hide();
  ShownPanel().show();
}

bool BenchWindow::AttachBus(const QString& path, QString& error) {
  std::string why;
  I2cDevHost::Options options;
  options.pec = pec_;
  std::unique_ptr<I2cDevHost> bus = I2cDevHost::Open(path.toStdString(), options, why);
  if (!bus) {
    error = QString::fromStdString(why);
    return false;
  }
  bus->onFailure = [this](const std::string& sentence) {
    statusBar()->showMessage(QString::fromStdString(sentence));
    if (unattended_) std::cerr << "bus: " << sentence << '\n';
  };
  host_.SetInner(*bus);
  bus_ = std::move(bus);
  sources_->hide();
  int index = gaugeChoice_->findData(path);
  if (index < 0) {
    gaugeChoice_->addItem(path, path);
    index = gaugeChoice_->count() - 1;
  }
  chosen_ = index;
  gaugeChoice_->setCurrentIndex(index);
  return true;
}

void BenchWindow::MakeBusLog(PanelPlugin& plugin) {
  // The commands are named as the plug-in's panels have them configured at each operation.
  auto* dock = new BusLogDock([&plugin] { return plugin.CurrentCommands(); }, this);
  addDockWidget(Qt::BottomDockWidgetArea, dock);
  host_.onOperation = [this, dock](const BusOperation& operation) {
    dock->Add(operation);
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
  return gauges_[IndexOf(family_)]->AppliedMeasurements();
}

void BenchWindow::AttachSimulated(sim::Family family) {
  family_ = family;
  simHost_.Attach(gauges_[IndexOf(family)].get());
  host_.SetInner(simHost_);
  bus_.reset();
  statusBar()->clearMessage();
  sources_->SetGauge(*gauges_[IndexOf(family)]);
  sources_->show();
}

}  // namespace ombrelay
