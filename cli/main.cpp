// ombrelay: the panels from the command line, on a real bus or a simulated gauge.

#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "cli/command_line.h"
#include "cli/host_opening.h"
#include "hosts/i2c_buses.h"
#include "platforms/console_platform.h"
#include "sim/clock.h"

int main(int argc, char* argv[]) {
  using namespace ombrelay;
  sim::RealClock clock;
  ConsolePlatform console(std::cerr);
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  cli::Environment env{
      .platform = console,
      .clock = clock,
      .openHost = [&clock](
                      const cli::HostChoice& choice,
                      std::string& why) { return cli::OpenHost(choice, clock, std::cerr, why); },
      .in = std::cin,
      .out = std::cout,
      .err = std::cerr,
      .inIsTerminal = isatty(STDIN_FILENO) == 1,
      .errIsTerminal = isatty(STDERR_FILENO) == 1,
      .defaultAppDir = self.parent_path().string(),
      .adaptersFolder = kI2cAdapters,
  };
  return cli::RunCommandLine(std::vector<std::string>(argv + 1, argv + argc), env);
}
