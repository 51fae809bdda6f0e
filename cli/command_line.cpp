#include "cli/command_line.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <ostream>

#include "cli/calibration_commands.h"
#include "cli/confirmation.h"
#include "cli/dataflash_commands.h"
#include "cli/digest_command.h"
#include "cli/option_parsing.h"
#include "cli/security_commands.h"
#include "cli/session.h"
#include "hosts/i2c_buses.h"

namespace ombrelay::cli {
namespace {

// What a command that changes the gauge is about to do, for the question; empty for the others.
std::string Change(const Options& options) {
  switch (options.command) {
    case Command::CalibrateVoltageTemperature:
      return "calibrate the voltages and temperatures of";
    case Command::CalibratePack:
      return "calibrate the pack voltage of";
    case Command::CalibrateCurrent:
      return "calibrate the current of";
    case Command::CalibrateCcOffset:
      return "calibrate the coulomb counter offset of";
    case Command::CalibrateBoardOffset:
      return "calibrate the board offset of";
    case Command::Seal:
      return "seal";
    case Command::Unseal:
      return "unseal";
    case Command::FullAccess:
      return "put in Full Access";
    case Command::ChangeKey:
      return "change a key of";
    case Command::DataflashRestore:
      return "restore the dataflash rows of " + options.backupFile + " that differ into";
    default:
      return {};
  }
}

void ListBuses(Environment& env) {
  const std::vector<I2cBus> buses = ListI2cBuses(env.adaptersFolder);
  if (buses.empty()) env.out << "no I2C buses (is the i2c-dev module loaded?)\n";
  for (const I2cBus& bus : buses)
    env.out << bus.path << '\t' << bus.name << '\n';
}

// Prints the report as asked; the program's own reason for a failure goes to standard error.
void Emit(Report& report, const Options& options, Environment& env, const Session* session) {
  if (!options.showKeys) MaskKeys(report);
  if (options.json) {
    const std::vector<ShownMessage> none;
    const auto& messages = session ? session->Messages() : none;
    const std::vector<BusOperation> nothing;
    const auto& operations = session ? session->Operations() : nothing;
    // A file name need not be UTF-8; such a byte is shown as U+FFFD rather than refused.
    env.out << ToJson(report, messages, operations)
                   .dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
            << std::endl;
  } else {
    WriteText(report, env.out);
    env.out << std::flush;
  }
  if (!report.succeeded && !report.failure.empty())
    env.err << "ombrelay: " << report.failure << '\n' << std::flush;
}

// False, after saying why, when there is no report to write or it could not be written.
bool WriteCalibrationReport(const std::optional<CalibrationReport>& record, const std::string& file,
                            Environment& env) {
  if (!record) {
    env.err << "ombrelay: no report written to " << file
            << ": the calibration's button was not pressed\n";
    return false;
  }
  std::ofstream out(file, std::ios::trunc);
  out << ToJson(*record).dump(2) << '\n';
  if (!out.flush()) {
    env.err << "ombrelay: cannot write the report " << file << ": " << std::strerror(errno) << '\n';
    return false;
  }
  return true;
}

// Emits the report and gives the exit status it calls for.
int Finish(Report& report, const Options& options, Environment& env, const Session* session) {
  Emit(report, options, env, session);
  return report.succeeded ? kExitSuccess : kExitFailure;
}

}  // namespace

int RunCommandLine(const std::vector<std::string>& args, Environment& env) {
  Options options;
  if (const std::optional<int> exit = ParseOptions(args, options, env.out, env.err)) return *exit;
  if (options.listBuses) {
    ListBuses(env);
    if (options.command == Command::None) return kExitSuccess;
  }
  Report report;
  report.command = options.commandName;
  std::optional<CalibrationReport> record;
  if (options.command == Command::Digest) {
    Digest(options, report);
    return Finish(report, options, env, nullptr);
  }
  // Backups are read whole before anything is asked or opened: a refused file touches no gauge.
  std::vector<DataflashBackup> backups;
  if (!ReadBackups(options, backups, report)) return Finish(report, options, env, nullptr);
  if (options.command == Command::DataflashDiff && backups.size() == 2) {
    CompareBackupFiles(backups, report);
    return Finish(report, options, env, nullptr);
  }

  const HostChoice where{options.bus, options.sim, options.sealed, options.pec};
  const std::string change = Change(options);
  if (!change.empty() && !ConfirmChange(change + " " + where.Where(), options.yes, env)) {
    env.err << "ombrelay: nothing done\n";
    return kExitFailure;
  }
  std::string error;
  const std::unique_ptr<Session> session = Session::Open(options, env, error);
  if (!session) {
    env.err << "ombrelay: " << error << '\n';
    return kExitFailure;
  }
  switch (options.command) {
    case Command::Identify:
      Identify(*session, report);
      break;
    case Command::Status:
      Status(*session, options, report, [&](Report& round) {
        session->EndProgress();
        Emit(round, options, env, session.get());
      });
      break;
    case Command::Mode:
    case Command::Seal:
    case Command::Unseal:
    case Command::FullAccess:
    case Command::Authenticate:
    case Command::ChangeKey:
      Secure(*session, options, report);
      break;
    case Command::DataflashBackup:
    case Command::DataflashDiff:
    case Command::DataflashRestore:
      Dataflash(*session, options, backups, report);
      break;
    default:
      Calibrate(*session, options, report, record);
      break;
  }
  session->EndProgress();
  const int exit = Finish(report, options, env, session.get());
  if (!options.reportFile.empty() && !WriteCalibrationReport(record, options.reportFile, env))
    return kExitFailure;
  return exit;
}

}  // namespace ombrelay::cli
