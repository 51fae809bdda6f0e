#include "app/bench_options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <iostream>

namespace ombrelay {

std::optional<BenchOptions> ParseBenchOptions(const QCoreApplication& app) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      "A bench for the Ombrelay panels: a simulated gauge on the bus, the calibration panel "
      "from the plug-in, and a log of every bus operation.");
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption sim("sim", "Simulated gauge: keld, quill, morlin or keld_plus.",
                               "FAMILY", "morlin");
  const QCommandLineOption appDir("appdir",
                                  "Application directory, with the plug-in in its plugins folder.",
                                  "DIR", QCoreApplication::applicationDirPath());
  const QCommandLineOption busLog("bus-log", "Also write the bus log to FILE, as JSON Lines.",
                                  "FILE");
  const QCommandLineOption screenshot(
      "screenshot",
      "Run unattended: answer every message box at once, writing it to standard error, and "
      "once start-up has finished save the window to FILE as PNG and exit.",
      "FILE");
  const QCommandLineOption calibrate(
      "calibrate",
      "With --screenshot: once start-up has finished, type what the bench applies into the "
      "voltage and temperature page, press its calibration button, and take the screenshot "
      "afterwards.");
  parser.addOptions({sim, appDir, busLog, screenshot, calibrate});
  parser.process(app);

  const QString familyName = parser.value(sim);
  const std::optional<sim::Family> family = sim::FamilyFromName(familyName.toStdString());
  if (!family) {
    std::cerr << "ombrelay-bench: unknown gauge family \"" << familyName.toStdString()
              << "\"; choose keld, quill, morlin or keld_plus\n";
    return std::nullopt;
  }
  if (parser.isSet(calibrate) && !parser.isSet(screenshot)) {
    std::cerr << "ombrelay-bench: --calibrate goes with --screenshot\n";
    return std::nullopt;
  }
  return BenchOptions{*family, parser.value(appDir), parser.value(busLog), parser.value(screenshot),
                      parser.isSet(calibrate)};
}

}  // namespace ombrelay
