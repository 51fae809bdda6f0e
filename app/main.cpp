// ombrelay-bench: the calibration panel on a simulated gauge.

#include <QApplication>
#include <QTimer>
#include <iostream>
#include <memory>
#include <utility>

#include "app/bench_options.h"
#include "app/bench_window.h"
#include "app/plugin_loading.h"
#include "app/unattended_calibration.h"
#include "ui/plugin_interface.h"

namespace {

using ombrelay::kExitFailure;

// Interval of the panel's scan, and a little more: by then one tick has filled the boxes.
constexpr int kAfterOneScanMs = 2500;

void SaveScreenshot(QWidget& window, const QString& file) {
  if (window.grab().save(file, "PNG")) {
    QCoreApplication::exit(0);
  } else {
    std::cerr << "ombrelay-bench: cannot write the screenshot " << file.toStdString() << '\n';
    QCoreApplication::exit(kExitFailure);
  }
}

// Saves the window once its first start-up has finished, after a calibration when asked, and
// ends the run with the outcome.
void TakeScreenshotAfterStartup(ombrelay::PanelPlugin& plugin, ombrelay::BenchWindow& window,
                                QWidget& panel, const ombrelay::BenchOptions& options) {
  const QString file = options.screenshot;
  const bool calibrate = options.calibrate;
  plugin.OnStartupFinished(
      &panel, [&window, &panel, file, calibrate, taken = std::make_shared<bool>(false)] {
        if (std::exchange(*taken, true)) return;
        if (!calibrate) {
          // Let the layouts settle on what start-up has put into the widgets.
          QTimer::singleShot(0, &window, [&window, file] { SaveScreenshot(window, file); });
          return;
        }
        ombrelay::StartContinuousUpdates(panel);
        QTimer::singleShot(kAfterOneScanMs, &window, [&window, &panel, file] {
          ombrelay::CalibrateAsTheBenchApplies(panel, window.Applied());
          QTimer::singleShot(0, &window, [&window, file] { SaveScreenshot(window, file); });
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

  ombrelay::BenchWindow window(*plugin, options->family);
  if (!options->busLog.isEmpty() && !window.Bus().OpenLog(options->busLog.toStdString())) {
    std::cerr << "ombrelay-bench: cannot open the bus log " << options->busLog.toStdString()
              << '\n';
    return kExitFailure;
  }
  if (screenshot) {
    TakeScreenshotAfterStartup(*plugin, window, *window.centralWidget(), *options);
  }
  window.show();
  return QApplication::exec();
}
