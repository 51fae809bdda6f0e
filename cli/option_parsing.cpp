#include "cli/option_parsing.h"

#include <CLI/CLI.hpp>
#include <utility>

#include "cli/environment.h"
#include "hosts/i2c_buses.h"

namespace ombrelay::cli {
namespace {

constexpr const char* kSharedOptions =
    "The options every command shares (--bus, --sim, --sealed, --pec, --appdir, --bus-log, "
    "--json, --yes, --show-keys) may stand before or after it: see ombrelay --help.";

constexpr const char* kExitStatuses =
    "Exit status: 0 when the action succeeded as the panel shows it, 1 when it failed, 2 for a "
    "command line that cannot be used.";

// The temperature rows of the page, by the names --temp takes.
const std::map<std::string, int> kSensors = {
    {"internal", 0}, {"ext1", 1}, {"ext2", 2}, {"ext3", 3}, {"ext4", 4}};

// "SENSOR=C" into the row and the text to type; a usage error for anything else.
std::pair<int, std::string> ParseTemperature(const std::string& entry) {
  const auto equals = entry.find('=');
  const auto sensor =
      equals == std::string::npos ? kSensors.end() : kSensors.find(entry.substr(0, equals));
  const std::string celsius = equals == std::string::npos ? "" : entry.substr(equals + 1);
  if (sensor == kSensors.end() || !CLI::Number(celsius).empty()) {
    throw CLI::ValidationError("--temp",
                               "expects SENSOR=C, SENSOR one of internal, ext1, ext2, ext3, ext4 "
                               "and C a number: " +
                                   entry);
  }
  return {sensor->second, celsius};
}

const std::map<std::string, KeyKind> kKeyKinds = {{"unseal", KeyKind::Unseal},
                                                  {"full-access", KeyKind::FullAccess},
                                                  {"authentication", KeyKind::Authentication}};

const std::map<std::string, DigestMode> kDigestModes = {{"msg", DigestMode::Message},
                                                        {"key-msg", DigestMode::KeyAndMessage},
                                                        {"keyed", DigestMode::Keyed}};

struct Subcommand {
  CLI::App* app;
  Command command;
};

// The commands that need a gauge: all but digest and a diff of two backups.
bool NeedsGauge(const Options& options) {
  if (options.command == Command::DataflashDiff) return options.secondBackupFile.empty();
  return options.command != Command::Digest && options.command != Command::None;
}

class Grammar {
 public:
  explicit Grammar(Options& options) : options_(options) {
    app_.description(
        "Calibrates and secures smart-battery gas gauges over SMBus, through the same panels as "
        "the bench: each command types into their boxes and presses their buttons.");
    app_.footer(kExitStatuses);
    app_.require_subcommand(0, 1);
    Shared();
    Gauge();
    Calibrate();
    Security();
    Dataflash();
    Digest();
  }

  CLI::App& App() { return app_; }

  // The parsed command, with its name as typed.
  void Resolve() {
    for (const Subcommand& each : subcommands_) {
      if (each.app->parsed()) {
        options_.command = each.command;
        const CLI::App* parent = each.app->get_parent();
        options_.commandName = parent != &app_ ? parent->get_name() + " " + each.app->get_name()
                                               : each.app->get_name();
      }
    }
    for (const std::string& entry : temperatureEntries_) {
      auto [row, celsius] = ParseTemperature(entry);
      options_.temperatures.insert_or_assign(row, std::move(celsius));
    }
    if (options_.command == Command::None && !options_.listBuses)
      throw CLI::RequiredError("A command, or --list-buses");
    if (NeedsGauge(options_) && options_.bus.empty() && !options_.sim)
      throw CLI::RequiredError("ombrelay " + options_.commandName +
                               " needs a gauge: give --bus or --sim");
  }

 private:
  CLI::App* Add(CLI::App& parent, const char* name, const char* description, Command command) {
    CLI::App* sub = parent.add_subcommand(name, description);
    sub->fallthrough();
    sub->footer(kSharedOptions);
    if (command != Command::None) subcommands_.push_back({sub, command});
    return sub;
  }

  void Shared() {
    app_.add_flag("--list-buses", options_.listBuses,
                  "Print the I2C buses present, one a line: its device and the adapter's name");
    CLI::Option* bus =
        app_.add_option("--bus", options_.bus, "The gauge on this I2C bus: /dev/i2c-N, or just N")
            ->type_name("/dev/i2c-N|N")
            ->transform([](const std::string& text) {
              const std::optional<std::string> path = I2cBusPath(text);
              if (!path) throw CLI::ValidationError("--bus", "expects /dev/i2c-N or N: " + text);
              return *path;
            });
    CLI::Option* sim =
        app_.add_option_function<std::string>(
                "--sim",
                [this](const std::string& name) { options_.sim = sim::FamilyFromName(name); },
                "A fresh simulated sample gauge of this family instead of a bus, in this "
                "process, on the real clock")
            ->type_name("FAMILY")
            ->check(CLI::IsMember({"keld", "quill", "morlin", "keld_plus"}, CLI::ignore_case));
    bus->excludes(sim);
    app_.add_flag("--sealed", options_.sealed, "With --sim: the simulated gauge starts Sealed")
        ->needs(sim);
    app_.add_flag("--pec", options_.pec,
                  "With --bus: packet error checking on every transfer, where the adapter and the "
                  "gauge support it")
        ->needs(bus);
    app_.add_option("--appdir", options_.appDir,
                    "The application directory with config.ini, Quvara.ini, the target files "
                    "and the dataflash maps (default: the folder ombrelay stands in)")
        ->type_name("DIR");
    app_.add_option("--bus-log", options_.busLog,
                    "Also write every bus operation to FILE, one JSON object a line")
        ->type_name("FILE");
    app_.add_flag("--json", options_.json,
                  "Print one JSON object on standard output: command, outcome, the values "
                  "shown, the messages shown and the bytes written on the bus");
    app_.add_flag("--yes", options_.yes,
                  "Do not ask before a command that changes the gauge (asked only when "
                  "standard input is a terminal)");
    app_.add_flag("--show-keys", options_.showKeys,
                  "Show keys in clear in --json and --bus-log (masked as * otherwise)");
  }

  void Gauge() {
    Add(app_, "identify",
        "Start the calibration panel and print what it identified: device, firmware, family, "
        "dataflash map, cells",
        Command::Identify);
    CLI::App* status =
        Add(app_, "status",
            "Print the live values the calibration panel's scan shows (voltages in mV, current "
            "in mA, temperatures in degrees C) and its dataflash grid",
            Command::Status);
    status
        ->add_option("--watch", options_.watchSeconds,
                     "Print them again every SECONDS seconds until interrupted; with --json, one "
                     "object a line")
        ->type_name("SECONDS")
        ->check(CLI::PositiveNumber);
    status->add_option("--count", options_.count, "With --watch: stop after N printings")
        ->type_name("N")
        ->check(CLI::PositiveNumber);
    Add(app_, "mode", "Print the security mode the security panel reads", Command::Mode);
  }

  void Calibrate() {
    CLI::App* calibrate = Add(app_, "calibrate",
                              "Calibrate the gauge through the calibration panel (asks first "
                              "on a terminal)",
                              Command::None);
    calibrate->require_subcommand(1);
    calibrate
        ->add_option("--report", options_.reportFile,
                     "Also write the calibration's report to FILE as JSON: the gauge, its "
                     "configuration, what was entered, the values shown before and after, the "
                     "boxes shown and every dataflash byte changed with its read-back "
                     "(ombrelay-report-pdf makes a PDF page of it)")
        ->type_name("FILE");
    CLI::App* vt =
        Add(*calibrate, "voltage-temperature",
            "Voltage and temperature calibration: types the values into the first page, ticks "
            "them and presses its calibration button",
            Command::CalibrateVoltageTemperature);
    vt->add_option("--cells", options_.cells,
                   "The stack voltages in mV, as the page's boxes take them: from stack ground "
                   "to the top of cell 1, of cell 2, ... (\"Cell 1\", \"Cell 1 + 2\", ...), one "
                   "for each cell in use, comma-separated; e.g. 3700,7400,11100 for three cells "
                   "of 3700 mV. Ticks voltage calibration")
        ->type_name("MV,...")
        ->delimiter(',')
        ->check(CLI::Number);
    vt->add_option("--battery", options_.battery,
                   "The battery voltage in mV, usually the top of the stack; needed with --cells "
                   "on gauges whose page has the battery voltage row")
        ->type_name("MV")
        ->check(CLI::Number);
    vt->add_option("--temp", temperatureEntries_,
                   "The actual temperature of a sensor in degrees C, SENSOR one of internal, "
                   "ext1, ext2, ext3, ext4; ticks that sensor. May be repeated")
        ->type_name("SENSOR=C");
    Add(*calibrate, "pack", "Pack voltage calibration: types the applied voltage and presses it",
        Command::CalibratePack)
        ->add_option("--mv", options_.entered, "The pack voltage applied, in mV")
        ->type_name("MV")
        ->required()
        ->check(CLI::Number);
    Add(*calibrate, "current",
        "Sense resistor current calibration: types the applied current and presses it",
        Command::CalibrateCurrent)
        ->add_option("--ma", options_.entered,
                     "The current flowing, in mA: negative for a discharge (the page asks for "
                     "-2000)")
        ->type_name("MA")
        ->required()
        ->check(CLI::Number);
    Add(*calibrate, "cc-offset", "Coulomb counter offset calibration; no current may flow",
        Command::CalibrateCcOffset);
    Add(*calibrate, "board-offset", "Board offset calibration; no current may flow",
        Command::CalibrateBoardOffset);
  }

  void Security() {
    Add(app_, "seal", "Seal the gauge through the security panel (asks first on a terminal)",
        Command::Seal);
    KeyOption(Add(app_, "unseal", "Unseal the gauge with its Unseal key (asks first on a terminal)",
                  Command::Unseal),
              "The Unseal key: 32 hex digits, most significant first");
    KeyOption(Add(app_, "full-access",
                  "Put the gauge in Full Access with its Full Access key (asks first on a "
                  "terminal)",
                  Command::FullAccess),
              "The Full Access key: 32 hex digits, most significant first");
    KeyOption(Add(app_, "authenticate",
                  "Prove that the gauge holds an authentication key: the panel sends a random "
                  "challenge and compares the gauge's answer",
                  Command::Authenticate),
              "The authentication key to test: 32 hex digits, most significant first");
    CLI::App* change =
        Add(app_, "change-key",
            "Replace one of the gauge's three keys and verify it (asks first on a terminal)",
            Command::ChangeKey);
    change
        ->add_option_function<std::string>(
            "which", [this](const std::string& which) { options_.keyKind = kKeyKinds.at(which); },
            "The key to replace")
        ->type_name("WHICH")
        ->required()
        ->check(CLI::IsMember(kKeyKinds));
    KeyOption(change, "The new key: 32 hex digits, most significant first");
  }

  void KeyOption(CLI::App* sub, const char* description) {
    sub->add_option("--key", options_.key, description)->type_name("HEX")->required();
  }

  void Dataflash() {
    CLI::App* dataflash =
        Add(app_, "dataflash",
            "Back up a MORLIN or KELD_PLUS gauge's dataflash into a file, compare a backup with "
            "the gauge or with another backup, or restore one",
            Command::None);
    dataflash->require_subcommand(1);
    Add(*dataflash, "backup",
        "Read every parameter of the gauge's dataflash map, with the rows that hold them, into "
        "FILE (JSON)",
        Command::DataflashBackup)
        ->add_option("file", options_.backupFile, "The backup to write")
        ->type_name("FILE")
        ->required();
    CLI::App* diff = Add(*dataflash, "diff",
                         "Print the parameters, with their values, and the rows that differ "
                         "between the backup FILE and the gauge, or between FILE and FILE2 "
                         "(no gauge)",
                         Command::DataflashDiff);
    diff->add_option("file", options_.backupFile, "The backup")->type_name("FILE")->required();
    diff->add_option("file2", options_.secondBackupFile, "A second backup, in place of the gauge")
        ->type_name("FILE2");
    Add(*dataflash, "restore",
        "Write the rows of the backup FILE that differ from the gauge, each verified by its "
        "read-back; refused on a Sealed gauge and on another kind of gauge (asks first on a "
        "terminal)",
        Command::DataflashRestore)
        ->add_option("file", options_.backupFile, "The backup to restore")
        ->type_name("FILE")
        ->required();
  }

  void Digest() {
    CLI::App* digest = Add(app_, "digest",
                           "Work out a digest with the calculator form, as the security panel "
                           "exchanges them; no gauge",
                           Command::Digest);
    digest->add_option("--key", options_.key, "The key: 32 hex digits (16 bytes)")
        ->type_name("HEX");
    digest
        ->add_option("--message", options_.message,
                     "The message, e.g. a challenge: 40 hex digits (20 bytes)")
        ->type_name("HEX")
        ->required();
    digest
        ->add_option_function<std::string>(
            "--mode",
            [this](const std::string& mode) { options_.digestMode = kDigestModes.at(mode); },
            "msg: SHA-1 of the message; key-msg: SHA-1 of key and message; keyed (default): the "
            "two-pass keyed digest of the panel's exchanges. Shorter texts count zero bytes at "
            "the end, longer ones are cut")
        ->type_name("MODE")
        ->check(CLI::IsMember(kDigestModes));
  }

  Options& options_;
  CLI::App app_{"", "ombrelay"};
  std::vector<Subcommand> subcommands_;
  std::vector<std::string> temperatureEntries_;
};

}  // namespace

std::optional<int> ParseOptions(const std::vector<std::string>& args, Options& options,
                                std::ostream& out, std::ostream& err) {
  Grammar grammar(options);
  try {
    std::vector<std::string> reversed(args.rbegin(), args.rend());
    grammar.App().parse(reversed);
    grammar.Resolve();
  } catch (const CLI::ParseError& error) {
    grammar.App().exit(error, out, err);
    return error.get_exit_code() == 0 ? kExitSuccess : kExitUsage;
  }
  return std::nullopt;
}

}  // namespace ombrelay::cli
