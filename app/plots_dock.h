#pragma once
// Live plots of the calibration panel's measured values: cell voltages, the stack, battery and
// pack, the temperatures and the current over a chosen time window, each a chart, and the whole
// history exportable as CSV. The dock reads what the panel shows, once a second while the
// panel's continuous updates are on, and never touches the bus.

#include <QDockWidget>
#include <QElapsedTimer>
#include <QTimer>
#include <array>

#include "app/scan_history.h"

class QChart;
class QComboBox;
class QLineSeries;
class QValueAxis;

namespace ombrelay {

class PlotsDock : public QDockWidget {
 public:
  static constexpr int kSampleMs = 1000;

  explicit PlotsDock(QWidget* parent = nullptr);

  // Reads this calibration panel from now on; the history starts afresh.
  void Watch(QWidget& calibrationPanel);
  const ScanHistory& History() const { return history_; }
  // Writes the history as CSV; false, with the reason in error, when the file cannot be written.
  bool ExportCsv(const QString& file, QString& error) const;
  // Takes a sample now, as the dock's timer does.
  void Sample();

 private:
  struct Chart {
    QChart* chart = nullptr;
    QValueAxis* time = nullptr;
    QValueAxis* values = nullptr;
  };
  void MakeCharts(QWidget& holder);
  void Redraw();
  void AskAndExport();
  double WindowSeconds() const;

  QWidget* panel_ = nullptr;
  QElapsedTimer since_;
  QTimer sampler_;
  ScanHistory history_;
  QComboBox* window_ = nullptr;
  std::array<Chart, static_cast<std::size_t>(ScanChart::Count)> charts_{};
  std::array<QLineSeries*, kScanSeriesCount> lines_{};
};

}  // namespace ombrelay
