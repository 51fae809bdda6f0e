#pragma once
// The bench's command line.

#include <QString>
#include <optional>

#include "sim/family.h"

class QCoreApplication;

namespace ombrelay {

enum class BenchPanel { Calibration, Security };

struct BenchOptions {
  sim::Family family = sim::Family::Morlin;    // the simulated gauge on the bus, unless bus is set
  QString bus;                                 // "/dev/i2c-N": a real bus instead
  bool pec = false;                            // packet error checking on a real bus
  QString appDir;                              // holds plugins/libombrelay.so
  QString busLog;                              // empty: no log file
  QString screenshot;                          // empty: an ordinary interactive run
  bool calibrate = false;                      // with a screenshot: calibrate before it is taken
  BenchPanel panel = BenchPanel::Calibration;  // the panel shown first
  bool sealed = false;                         // the simulated gauges start Sealed
  std::optional<int> tab;   // with a screenshot: the shown panel's tab chosen before it is taken
  bool calculator = false;  // with a screenshot: of the calculator, opened after start-up
  // With a screenshot: the offsets, the current and the pack voltage calibrated, after calibrate,
  // before it is taken.
  bool calibrateCurrent = false;
  // With a screenshot: the live scan runs this long while the bench's sources change, and the
  // screenshot is of the plots dock.
  std::optional<int> plotSeconds;
  // With a screenshot and a calibration: the calibrations' reports, saved here and as PDF.
  QString reportFile;
  bool unseal = false;  // with a screenshot of the security panel: Go with Unseal before it
};

// Exit statuses of the bench.
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

// Parses the command line of app. --help and --version print and exit there and then; an
// unusable option is reported on standard error and gives nothing.
std::optional<BenchOptions> ParseBenchOptions(const QCoreApplication& app);

}  // namespace ombrelay
