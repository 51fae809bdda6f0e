#include "bench/faulted_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace ombrelay {
namespace {

// A flow still going after this much virtual time or this many operations hangs. The pending
// error drain loops end on their own: the simulator's pending errors are finite.
constexpr std::int64_t kHangAfterMs = 10 * 60 * 1000;
constexpr std::size_t kHangAfterOperations = 200000;
// A flow that spins without touching the bus is caught by the real clock instead.
constexpr unsigned kHangAfterRealSeconds = 60;
constexpr int kHangStatus = 42;

// What a child tells its parent; texts are cut to fit.
struct ChildReport {
  std::uint8_t told = 0;
  std::uint8_t failed = 0;
  std::uint32_t strayBytes = 0;
  std::uint32_t firstStrayAddress = 0;
  char outcome[240] = {};
};

ChildReport RunInChild(FlowBench& bench, const CampaignFlow& flow, const CleanRun& clean,
                       std::size_t k, const Fault& fault) {
  testing::SimBench& sim = bench.Sim();
  sim::Gauge& gauge = *sim.gauge;
  const std::int64_t startMs = sim.clock.NowMs();
  std::size_t done = 0;
  if (k == 0) Inject(fault, gauge);
  sim.afterOperation = [&](const BusOperation&) {
    if (++done == k) Inject(fault, gauge);
    if (done > kHangAfterOperations || sim.clock.NowMs() - startMs > kHangAfterMs)
      _exit(kHangStatus);
  };
  flow.run(bench);

  ChildReport report;
  const std::string outcome = flow.outcome(bench);
  const sim::Bytes after = gauge.DataflashBytes(0, kCampaignDataflashBytes);
  report.told = !sim.platform.Messages().empty() ||
                (outcome != clean.outcome && flow.tells && flow.tells(outcome, clean.outcome));
  report.failed = outcome != clean.outcome || after != clean.after;
  // A byte is where it was or where the clean run put it; anything else is stray.
  for (std::size_t i = 0; i < after.size(); ++i) {
    if (after[i] == clean.before[i] || after[i] == clean.after[i]) continue;
    if (report.strayBytes++ == 0) report.firstStrayAddress = static_cast<std::uint32_t>(i);
  }
  std::strncpy(report.outcome, outcome.c_str(), sizeof(report.outcome) - 1);
  return report;
}

bool ReadWhole(int fd, ChildReport& report) {
  auto* bytes = reinterpret_cast<char*>(&report);
  std::size_t got = 0;
  while (got < sizeof(report)) {
    const ssize_t n = read(fd, bytes + got, sizeof(report) - got);
    if (n <= 0) return false;
    got += static_cast<std::size_t>(n);
  }
  return true;
}

}  // namespace

CleanRun RunClean(const CampaignFlow& flow, sim::Family family) {
  FlowBench bench(family, flow.security);
  flow.setUp(bench);
  testing::SimBench& sim = bench.Sim();
  CleanRun clean;
  clean.before = sim.gauge->DataflashBytes(0, kCampaignDataflashBytes);
  flow.run(bench);
  clean.operations = sim.host.Operations();
  clean.outcome = flow.outcome(bench);
  clean.boxes = sim.platform.Messages().size();
  clean.after = sim.gauge->DataflashBytes(0, kCampaignDataflashBytes);
  return clean;
}

FaultedRun RunFaulted(FlowBench& prepared, const CampaignFlow& flow, const CleanRun& clean,
                      std::size_t k, const Fault& fault) {
  int fds[2];
  if (pipe(fds) != 0) {
    std::perror("pipe");
    std::exit(2);
  }
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child < 0) {
    std::perror("fork");
    std::exit(2);
  }
  if (child == 0) {
    close(fds[0]);
    alarm(kHangAfterRealSeconds);
    const ChildReport report = RunInChild(prepared, flow, clean, k, fault);
    const bool written = write(fds[1], &report, sizeof(report)) == sizeof(report);
    // No destructors, no flushing of what the parent still holds: the child only reports.
    _exit(written ? 0 : 3);
  }
  close(fds[1]);
  ChildReport report;
  const bool reported = ReadWhole(fds[0], report);
  close(fds[0]);
  int status = 0;
  waitpid(child, &status, 0);

  FaultedRun run;
  if (WIFEXITED(status) && WEXITSTATUS(status) == kHangStatus) {
    run.hung = true;
  } else if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM) {
    run.hung = true;
  } else if (!reported || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    run.crashed = true;
  } else {
    run.told = report.told != 0;
    run.failed = report.failed != 0;
    run.strayBytes = report.strayBytes;
    run.firstStrayAddress = report.firstStrayAddress;
    run.outcome = report.outcome;
  }
  return run;
}

}  // namespace ombrelay
