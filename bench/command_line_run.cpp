#include "bench/command_line_run.h"

#include <iostream>
#include <memory>
#include <sstream>
#include <utility>

#include "bench/accounting_platform.h"
#include "cli/command_line.h"
#include "cli/host_opening.h"
#include "hosts/recording_host.h"
#include "platforms/console_platform.h"
#include "sim/clock.h"

namespace ombrelay {
namespace {

// The run's own host behind a recording one that it owns, so that the command line can own both.
class OwnedRecording : public RecordingHost {
 public:
  OwnedRecording(std::unique_ptr<Host> inner, const sim::Clock& clock)
      : RecordingHost(*inner, [&clock] { return clock.NowMs(); }), inner_(std::move(inner)) {}

 private:
  std::unique_ptr<Host> inner_;
};

}  // namespace

CommandRun RunCommand(const std::vector<std::string>& args, const std::string& appDir) {
  sim::RealClock clock;
  ConsolePlatform console(std::cerr);
  console.StartDayNow();
  AccountingPlatform platform(console);
  std::vector<BusOperation> operations;
  std::istringstream in;
  std::ostringstream out;
  cli::Environment env{
      .platform = platform,
      .clock = clock,
      .openHost = [&](const cli::HostChoice& choice, std::string& error) -> std::unique_ptr<Host> {
        std::unique_ptr<Host> opened = cli::OpenHost(choice, clock, std::cerr, error);
        if (!opened) return nullptr;
        auto recorded = std::make_unique<OwnedRecording>(std::move(opened), clock);
        recorded->onOperation = [&operations](const BusOperation& operation) {
          operations.push_back(operation);
        };
        return recorded;
      },
      .in = in,
      .out = out,
      .err = std::cerr,
      .defaultAppDir = appDir,
      .adaptersFolder = "",
  };
  CommandRun run;
  run.measures =
      MeasureSlice(operations, platform, [&] { run.exit = cli::RunCommandLine(args, env); });
  return run;
}

}  // namespace ombrelay
