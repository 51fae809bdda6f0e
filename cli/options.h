#pragma once
// The command line as parsed: which command, its arguments, and the options every command
// shares.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "sim/family.h"

namespace ombrelay::cli {

enum class Command {
  None,
  Identify,
  Status,
  Mode,
  CalibrateVoltageTemperature,
  CalibratePack,
  CalibrateCurrent,
  CalibrateCcOffset,
  CalibrateBoardOffset,
  Seal,
  Unseal,
  FullAccess,
  Authenticate,
  ChangeKey,
  Digest,
  DataflashBackup,
  DataflashDiff,
  DataflashRestore,
};

// Which key change-key replaces.
enum class KeyKind { Unseal, FullAccess, Authentication };
// Which of the calculator's digests digest works out.
enum class DigestMode { Message, KeyAndMessage, Keyed };

struct Options {
  Command command = Command::None;
  std::string commandName;  // as typed: "calibrate pack", "seal", ...

  // Shared by every command.
  bool listBuses = false;
  std::string bus;
  std::optional<sim::Family> sim;
  bool sealed = false;
  bool pec = false;
  std::string appDir;
  std::string busLog;
  bool json = false;
  bool yes = false;
  bool showKeys = false;

  // status
  std::optional<double> watchSeconds;
  std::optional<int> count;

  // calibrate voltage-temperature: stack voltages in mV, battery in mV, row -> degrees C
  std::vector<std::string> cells;
  std::optional<std::string> battery;
  std::map<int, std::string> temperatures;
  // calibrate pack (mV), calibrate current (mA)
  std::string entered;
  // calibrate: where to write the calibration's report, as JSON; empty for none
  std::string reportFile;

  // security commands and digest
  std::string key;
  KeyKind keyKind = KeyKind::Unseal;
  std::string message;
  DigestMode digestMode = DigestMode::Keyed;

  // dataflash: the backup written or read; diff's second backup, in place of the gauge
  std::string backupFile;
  std::string secondBackupFile;
};

}  // namespace ombrelay::cli
