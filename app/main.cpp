// ombrelay-bench: the plug-in's panels on a simulated gauge or a real bus.

#include <QApplication>
#include <QTabBar>
#include <QTimer>
#include <iostream>
#include <memory>
#include <utility>

#include "app/bench_options.h"
#include "app/bench_window.h"
#include "app/plots_dock.h"
#include "app/plugin_loading.h"
#include "app/unattended_calibration.h"
#include "app/unattended_plots.h"
#include "app/unattended_unseal.h"
#include "ui/plugin_interface.h"

namespace {

using ombrelay::kExitFailure;

void SaveScreenshot(QWidget& window, const QString& file) {
  if (window.grab().save(file, "PNG")) {
    QCoreApplication::exit(0);
  } else {
    std::cerr << "ombrelay-bench: cannot write the screenshot " << file.toStdString() << '\n';
    QCoreApplication::exit(kExitFailure);
  }
}

// Saves what the options ask for once start-up has settled into the widgets.
void SaveWhenSettled(ombrelay::PanelPlugin& plugin, ombrelay::BenchWindow& window,
                     const ombrelay::BenchOptions& options) {
  if (options.tab) {
    // As a click would: the panel hears of the tab it left.
    if (auto* tabs = window.ShownPanel().findChild<QTabBar*>()) tabs->setCurrentIndex(*options.tab);
  }
  QWidget* shown = options.calculator ? plugin.ShowCalculator(&window) : &window;
  const QString file = options.screenshot;
  QTimer::singleShot(0, shown, [shown, file] { SaveScreenshot(*shown, file); });
}

// Saves the window once the first panel's start-up has finished, after the calibrations asked
// for, and ends the run with the outcome.
void TakeScreenshotAfterStartup(ombrelay::PanelPlugin& plugin, ombrelay::BenchWindow& window,
                                const ombrelay::BenchOptions& options) {
  QWidget& panel = window.ShownPanel();
  plugin.OnStartupFinished(
      &panel, [&plugin, &window, &panel, options, taken = std::make_shared<bool>(false)] {
        if (std::exchange(*taken, true)) return;
        if (options.plotSeconds) {
          ombrelay::ScanWhileSourcesChange(panel, *options.plotSeconds, [&window, options] {
            window.Plots().raise();
            SaveScreenshot(window.Plots(), options.screenshot);
          });
          return;
        }
        if (options.unseal && !ombrelay::UnsealAsAnEngineerWould(panel)) {
          std::cerr << "ombrelay-bench: the gauge is not Unsealed after Go\n";
          QCoreApplication::exit(kExitFailure);
          return;
        }
        if (!options.calibrate && !options.calibrateCurrent) {
          SaveWhenSettled(plugin, window, options);
          return;
        }
        ombrelay::StartContinuousUpdates(panel);
        QTimer::singleShot(ombrelay::kAfterOneScanMs, &window, [&plugin, &window, &panel, options] {
          if (options.calibrate) ombrelay::CalibrateAsTheBenchApplies(panel, window.Applied());
          if (options.calibrateCurrent &&
              !ombrelay::CalibrateCurrentAsTheBenchApplies(
                  panel, window.Applied(), options.family == ombrelay::sim::Family::Quill)) {
            std::cerr << "ombrelay-bench: a calibration's done-mark stayed off\n";
            QCoreApplication::exit(kExitFailure);
            return;
          }
          QString error;
          if (!options.reportFile.isEmpty() && !window.Reports().Save(options.reportFile, error)) {
            std::cerr << "ombrelay-bench: " << error.toStdString() << '\n';
            QCoreApplication::exit(kExitFailure);
            return;
          }
          SaveWhenSettled(plugin, window, options);
        });
      });
}

}  // namespace

int main(int argc, char* argv[]) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("ombrelay-bench");
  QApplication::setApplicationDisplayName("Ombrelay Bench");
  QApplication::setApplicationVersion(OMBRELAY_VERSION);

  const std::optional<ombrelay::BenchOptions> options = ombrelay::ParseBenchOptions(app);
  if (!options) return ombrelay::kExitUsage;

  QString error;
  ombrelay::PanelPlugin* plugin = ombrelay::LoadPanelPlugin(options->appDir, error);
  if (plugin == nullptr) {
    std::cerr << "ombrelay-bench: " << error.toStdString() << '\n';
    return kExitFailure;
  }
  const bool screenshot = !options->screenshot.isEmpty();
  plugin->SetUnattended(screenshot);

  ombrelay::BenchWindow window(*plugin, *options);
  if (!options->busLog.isEmpty() && !window.Bus().OpenLog(options->busLog.toStdString())) {
    std::cerr << "ombrelay-bench: cannot open the bus log " << options->busLog.toStdString()
              << '\n';
    return kExitFailure;
  }
  if (!options->bus.isEmpty()) {
    if (!window.AttachBus(options->bus, error)) {
      std::cerr << "ombrelay-bench: " << error.toStdString() << '\n';
      return kExitFailure;
    }
  }
  if (screenshot) {
    TakeScreenshotAfterStartup(*plugin, window, *options);
  }
  window.show();
  return QApplication::exec();
}
