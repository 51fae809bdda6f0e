#include "app/plots_dock.h"

#include <QChart>
#include <QChartView>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLegendMarker>
#include <QLineEdit>
#include <QLineSeries>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <QValueAxis>
#include <algorithm>
#include <cmath>
#include <utility>

#include "shell/controls.h"

namespace ombrelay {
namespace {

constexpr std::array<std::pair<const char*, int>, 5> kWindows = {
    {{"1 min", 60}, {"5 min", 300}, {"15 min", 900}, {"1 h", 3600}, {"All", 0}}};
constexpr int kDefaultWindow = 1;
constexpr std::array<const char*, static_cast<std::size_t>(ScanChart::Count)> kChartTitles = {
    "Cell voltages (mV)", "Stack, battery and pack (mV)", "Temperatures (degC)", "Current (mA)"};
// Whole millivolts and milliamperes, temperatures to the tenth the panel shows.
constexpr std::array<const char*, static_cast<std::size_t>(ScanChart::Count)> kValueFormats = {
    "%.0f", "%.0f", "%.1f", "%.0f"};
constexpr QSize kChartSize{380, 260};
// Room above and below the values, so that a flat line does not sit on the frame.
constexpr double kValueMargin = 0.05;
constexpr double kFlatMargin = 1.0;
// Time ticks a round number of seconds apart, no more than this many over the window.
constexpr std::array<double, 11> kTimeSteps = {1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900};
constexpr double kMostTimeTicks = 7;

double TimeStep(double span) {
  for (const double step : kTimeSteps)
    if (span / step <= kMostTimeTicks) return step;
  return kTimeSteps.back() * std::ceil(span / kTimeSteps.back() / kMostTimeTicks);
}

// A box's text, if the panel uses the box: shown and, where asked, enabled.
std::optional<std::string> TextOf(QWidget& panel, const std::string& name, bool mustBeEnabled) {
  const auto* box = panel.findChild<QLineEdit*>(QString::fromStdString(name));
  if (box == nullptr || box->isHidden() || (mustBeEnabled && !box->isEnabled()))
    return std::nullopt;
  return box->text().toStdString();
}

ShownTexts ShownBy(QWidget& panel) {
  ShownTexts shown;
  // The panel disables the rows of cells the gauge does not have.
  for (std::size_t i = 0; i < shown.stackedCells.size(); ++i)
    shown.stackedCells[i] = TextOf(panel, IndexedName("txtCalMeasVoltage", i), true);
  shown.battery = TextOf(panel, "txtBatMeasured", false);
  shown.pack = TextOf(panel, "txtPackMeasured", false);
  for (std::size_t i = 0; i < shown.temperatures.size(); ++i)
    shown.temperatures[i] = TextOf(panel, IndexedName("txtMeasTemp", i), false);
  shown.current = TextOf(panel, "txtMeasuredCurrent", false);
  return shown;
}

bool UpdatesOn(QWidget& panel) {
  const auto* updates = panel.findChild<QCheckBox*>("chkUpdates");
  return updates != nullptr && updates->isChecked();
}

}  // namespace

PlotsDock::PlotsDock(QWidget* parent) : QDockWidget("Plots", parent) {
  setObjectName("plots");
  setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
  auto* holder = new QWidget(this);
  auto* column = new QVBoxLayout(holder);
  auto* bar = new QHBoxLayout;
  bar->addWidget(new QLabel("Window:", holder));
  window_ = new QComboBox(holder);
  window_->setObjectName("plotWindow");
  for (const auto& [label, seconds] : kWindows)
    window_->addItem(label, seconds);
  window_->setCurrentIndex(kDefaultWindow);
  connect(window_, &QComboBox::currentIndexChanged, this, [this] { Redraw(); });
  bar->addWidget(window_);
  bar->addStretch();
  auto* exportCsv = new QPushButton("Export CSV…", holder);
  exportCsv->setObjectName("exportCsv");
  connect(exportCsv, &QPushButton::clicked, this, [this] { AskAndExport(); });
  bar->addWidget(exportCsv);
  column->addLayout(bar);
  MakeCharts(*holder);
  setWidget(holder);
  sampler_.setInterval(kSampleMs);
  connect(&sampler_, &QTimer::timeout, this, [this] { Sample(); });
}

void PlotsDock::MakeCharts(QWidget& holder) {
  auto* grid = new QGridLayout;
  for (std::size_t c = 0; c < charts_.size(); ++c) {
    Chart& chart = charts_[c];
    chart.chart = new QChart;
    chart.chart->setTitle(kChartTitles[c]);
    chart.chart->legend()->setAlignment(Qt::AlignBottom);
    chart.time = new QValueAxis(chart.chart);
    chart.time->setTitleText("s");
    chart.time->setLabelFormat("%.0f");
    chart.time->setTickType(QValueAxis::TicksDynamic);
    chart.time->setTickAnchor(0);
    chart.values = new QValueAxis(chart.chart);
    chart.values->setLabelFormat(kValueFormats[c]);
    chart.chart->addAxis(chart.time, Qt::AlignBottom);
    chart.chart->addAxis(chart.values, Qt::AlignLeft);
    auto* view = new QChartView(chart.chart, &holder);
    view->setRenderHint(QPainter::Antialiasing);
    view->setMinimumSize(kChartSize);
    grid->addWidget(view, static_cast<int>(c / 2), static_cast<int>(c % 2));
  }
  for (std::size_t s = 0; s < lines_.size(); ++s) {
    const ScanSeries& series = ScanSeriesList()[s];
    Chart& chart = charts_[static_cast<std::size_t>(series.chart)];
    lines_[s] = new QLineSeries(chart.chart);
    lines_[s]->setName(series.name);
    chart.chart->addSeries(lines_[s]);
    lines_[s]->attachAxis(chart.time);
    lines_[s]->attachAxis(chart.values);
  }
  static_cast<QVBoxLayout*>(holder.layout())->addLayout(grid);
  Redraw();
}

void PlotsDock::Watch(QWidget& calibrationPanel) {
  panel_ = &calibrationPanel;
  history_ = ScanHistory();
  since_.start();
  sampler_.start();
  Redraw();
}

void PlotsDock::Sample() {
  if (panel_ == nullptr || !UpdatesOn(*panel_)) return;
  history_.Add(SampleOf(static_cast<double>(since_.elapsed()) / 1000.0, ShownBy(*panel_)));
  Redraw();
}

double PlotsDock::WindowSeconds() const {
  return window_->currentData().toDouble();
}

void PlotsDock::Redraw() {
  const auto& samples = history_.Samples();
  const double now = samples.empty() ? 0.0 : samples.back().seconds;
  const double window = WindowSeconds();
  const double from = window > 0 ? std::max(0.0, now - window) : 0.0;
  struct Range {
    double low = 0;
    double high = 0;
    bool any = false;
  };
  std::array<Range, static_cast<std::size_t>(ScanChart::Count)> ranges{};
  for (std::size_t s = 0; s < lines_.size(); ++s) {
    const std::size_t c = static_cast<std::size_t>(ScanSeriesList()[s].chart);
    Range& range = ranges[c];
    QList<QPointF> points;
    for (const ScanSample& sample : samples) {
      if (sample.seconds < from || !sample.values[s]) continue;
      const double value = *sample.values[s];
      points.append({sample.seconds, value});
      range.low = range.any ? std::min(range.low, value) : value;
      range.high = range.any ? std::max(range.high, value) : value;
      range.any = true;
    }
    lines_[s]->replace(points);
    // A series the gauge never gave stays out of the legend.
    for (QLegendMarker* marker : charts_[c].chart->legend()->markers(lines_[s]))
      marker->setVisible(!points.isEmpty());
  }
  for (std::size_t c = 0; c < charts_.size(); ++c) {
    const Range& range = ranges[c];
    const double spread = range.high - range.low;
    const double margin = spread > 0 ? spread * kValueMargin : kFlatMargin;
    charts_[c].values->setRange(range.low - margin, range.high + margin);
    charts_[c].values->applyNiceNumbers();
    const double to = std::max(now, from + 1.0);
    charts_[c].time->setRange(from, to);
    charts_[c].time->setTickInterval(TimeStep(to - from));
  }
}

bool PlotsDock::ExportCsv(const QString& file, QString& error) const {
  QFile out(file);
  const std::string csv = history_.ToCsv();
  if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
      out.write(csv.data(), static_cast<qint64>(csv.size())) != static_cast<qint64>(csv.size())) {
    error = QStringLiteral("Cannot write %1: %2").arg(file, out.errorString());
    return false;
  }
  return true;
}

void PlotsDock::AskAndExport() {
  const QString file =
      QFileDialog::getSaveFileName(this, "Export plots as CSV", "scan.csv", "CSV files (*.csv)");
  if (file.isEmpty()) return;
  QString error;
  if (!ExportCsv(file, error)) QMessageBox::warning(this, "Export CSV", error);
}

}  // namespace ombrelay
