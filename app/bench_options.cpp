#include "app/bench_options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <iostream>

#include "hosts/i2c_buses.h"

namespace ombrelay {
namespace {

// A tab index the panels have: neither has more than three.
constexpr int kLastTab = 2;
constexpr int kMostPlotSeconds = 3600;

void Refuse(const char* why) {
  std::cerr << "ombrelay-bench: " << why << '\n';
}

}  // namespace

std::optional<BenchOptions> ParseBenchOptions(const QCoreApplication& app) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      "A bench for the Ombrelay panels: a simulated gauge or a real bus, the calibration and "
      "security panels from the plug-in, each in a tab, and a log of every bus operation. "
      "Tools > SHA-1 Calculator opens the plug-in's calculator.");
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption sim("sim", "Simulated gauge: keld, quill, morlin or keld_plus.",
                               "FAMILY", "morlin");
  const QCommandLineOption bus(
      "bus",
      "A real bus instead of the simulated gauge: /dev/i2c-N, or just N (i2cdetect -l lists "
      "them). The gauge answers at 0x0B.",
      "BUS");
  const QCommandLineOption pec(
      "pec",
      "Packet error checking on every transfer of a real bus, where the adapter and the "
      "gauge support it.");
  const QCommandLineOption appDir("appdir",
                                  "Application directory, with the plug-in in its plugins folder.",
                                  "DIR", QCoreApplication::applicationDirPath());
  const QCommandLineOption busLog("bus-log", "Also write the bus log to FILE, as JSON Lines.",
                                  "FILE");
  const QCommandLineOption panel("panel", "The panel shown first: calibration or security.",
                                 "PANEL", "calibration");
  const QCommandLineOption sealed("sealed", "Start the simulated gauges Sealed.");
  const QCommandLineOption screenshot(
      "screenshot",
      "Run unattended: answer every message box at once, writing it to standard error, and "
      "once the first panel's start-up has finished save the window to FILE as PNG and exit.",
      "FILE");
  const QCommandLineOption calibrate(
      "calibrate",
      "With --screenshot and the calibration panel: once start-up has finished, type what the "
      "bench applies into the voltage and temperature page, press its calibration button, and "
      "take the screenshot afterwards.");
  const QCommandLineOption calibrateCurrent(
      "calibrate-current",
      "With --screenshot and the calibration panel: once start-up has finished (and after "
      "--calibrate), set the bench's current to 0 mA and press the coulomb counter offset and "
      "board offset buttons, set it to -2000 mA, type it in and press the current calibration "
      "button, type the bench's pack voltage in and press the pack calibration button, and take "
      "the screenshot after the next scan; exit with a failure instead if a done-mark stays off.");
  const QCommandLineOption unseal(
      "unseal",
      "With --screenshot and the security panel: once start-up has finished, select Unseal, "
      "press Go, and take the screenshot afterwards; exit with a failure instead if the panel "
      "does not show Unsealed then.");
  const QCommandLineOption tab(
      "tab", "With --screenshot: once start-up has finished, click tab N (from 0) of the panel.",
      "N");
  const QCommandLineOption calculator(
      "calculator",
      "With --screenshot: once start-up has finished, open the SHA-1 calculator and save it "
      "instead of the window.");
  const QCommandLineOption plot(
      "plot",
      "With --screenshot and the calibration panel: once start-up has finished, turn on the "
      "continuous updates, change the bench's sources a step at each quarter of SECONDS (a load "
      "of 2 A, a cell and TS1 up, the load off again), and after SECONDS save the plots dock "
      "instead of the window.",
      "SECONDS");
  const QCommandLineOption report(
      "report",
      "With --screenshot and --calibrate or --calibrate-current: once the calibrations are done, "
      "save their reports to FILE as JSON and beside it as PDF, as Reports > Save Calibration "
      "Reports… does.",
      "FILE");
  parser.addOptions({sim, bus, pec, appDir, busLog, panel, sealed, screenshot, calibrate,
                     calibrateCurrent, unseal, tab, calculator, plot, report});
  parser.process(app);

  BenchOptions options;
  const QString familyName = parser.value(sim);
  const std::optional<sim::Family> family = sim::FamilyFromName(familyName.toStdString());
  if (!family) {
    std::cerr << "ombrelay-bench: unknown gauge family \"" << familyName.toStdString()
              << "\"; choose keld, quill, morlin or keld_plus\n";
    return std::nullopt;
  }
  options.family = *family;
  if (parser.isSet(bus)) {
    const std::optional<std::string> path = I2cBusPath(parser.value(bus).toStdString());
    if (!path) {
      Refuse("--bus is /dev/i2c-N or N");
      return std::nullopt;
    }
    if (parser.isSet(sim) || parser.isSet(sealed)) {
      Refuse("--bus replaces the simulated gauge: leave out --sim and --sealed");
      return std::nullopt;
    }
    options.bus = QString::fromStdString(*path);
  }
  const QString panelName = parser.value(panel);
  if (panelName == "security") {
    options.panel = BenchPanel::Security;
  } else if (panelName != "calibration") {
    Refuse("--panel is calibration or security");
    return std::nullopt;
  }
  if (parser.isSet(tab)) {
    bool number = false;
    const int index = parser.value(tab).toInt(&number);
    if (!number || index < 0 || index > kLastTab) {
      Refuse("--tab is 0, 1 or 2");
      return std::nullopt;
    }
    options.tab = index;
  }
  const bool unattended = parser.isSet(screenshot);
  if (!unattended &&
      (parser.isSet(calibrate) || parser.isSet(calibrateCurrent) || parser.isSet(unseal) ||
       parser.isSet(tab) || parser.isSet(calculator) || parser.isSet(plot))) {
    Refuse(
        "--calibrate, --calibrate-current, --unseal, --tab, --calculator and --plot go with "
        "--screenshot");
    return std::nullopt;
  }
  if (parser.isSet(unseal) && options.panel != BenchPanel::Security) {
    Refuse("--unseal goes with the security panel");
    return std::nullopt;
  }
  if (parser.isSet(plot)) {
    bool number = false;
    const int seconds = parser.value(plot).toInt(&number);
    if (!number || seconds < 1 || seconds > kMostPlotSeconds) {
      Refuse("--plot is a number of seconds from 1 to 3600");
      return std::nullopt;
    }
    if (!options.bus.isEmpty() || options.panel != BenchPanel::Calibration ||
        parser.isSet(calibrate) || parser.isSet(calibrateCurrent)) {
      Refuse(
          "--plot changes the simulated sources under the calibration panel: leave out --bus, "
          "--panel security, --calibrate and --calibrate-current");
      return std::nullopt;
    }
    options.plotSeconds = seconds;
  }
  if ((parser.isSet(calibrate) || parser.isSet(calibrateCurrent)) && !options.bus.isEmpty()) {
    Refuse(
        "--calibrate and --calibrate-current type what the simulated sources apply; on a real "
        "bus type your own values into the panel");
    return std::nullopt;
  }
  if ((parser.isSet(calibrate) || parser.isSet(calibrateCurrent)) &&
      options.panel != BenchPanel::Calibration) {
    Refuse("--calibrate and --calibrate-current go with the calibration panel");
    return std::nullopt;
  }
  if (parser.isSet(report) && !parser.isSet(calibrate) && !parser.isSet(calibrateCurrent)) {
    Refuse("--report goes with --calibrate or --calibrate-current");
    return std::nullopt;
  }
  options.reportFile = parser.value(report);
  options.appDir = parser.value(appDir);
  options.busLog = parser.value(busLog);
  options.screenshot = parser.value(screenshot);
  options.calibrate = parser.isSet(calibrate);
  options.calibrateCurrent = parser.isSet(calibrateCurrent);
  options.unseal = parser.isSet(unseal);
  options.sealed = parser.isSet(sealed);
  options.pec = parser.isSet(pec);
  options.calculator = parser.isSet(calculator);
  return options;
}

}  // namespace ombrelay
