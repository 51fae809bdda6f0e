#include "cli/session.h"

#include "shell/shared_state.h"

namespace ombrelay::cli {
namespace {

constexpr std::int16_t kGaugeAddress = 23;

}  // namespace

Session::Session(std::unique_ptr<Host> bus, Environment& env)
    : bus_(std::move(bus)),
      recording_(*bus_, [&clock = env.clock] { return clock.NowMs(); }),
      messages_(env.platform, env.err) {
  if (env.errIsTerminal) progress_.emplace(messages_, env.clock, env.err);
}

std::unique_ptr<Session> Session::Open(const Options& options, Environment& env,
                                       std::string& error) {
  const HostChoice choice{options.bus, options.sim, options.sealed, options.pec};
  std::unique_ptr<Host> bus = env.openHost(choice, error);
  if (!bus) return nullptr;
  std::unique_ptr<Session> session(new Session(std::move(bus), env));
  if (!options.showKeys) session->recording_.MaskKeys();
  if (!options.busLog.empty() && !session->recording_.OpenLog(options.busLog)) {
    error = "cannot open the bus log " + options.busLog;
    return nullptr;
  }
  ResetSharedState();
  // Each panel sets the gauge's address at its show, the security panel only after its first
  // tab change has read the mode: a host that showed a panel before has it set already.
  g_iTargetAddress = kGaugeAddress;
  g_sPluginFolder = (options.appDir.empty() ? env.defaultAppDir : options.appDir) + "/plugins";
  return session;
}

Session::~Session() {
  ResetSharedState();
}

Platform& Session::GetPlatform() {
  if (progress_) return *progress_;
  return messages_;
}

void Session::EndProgress() {
  if (progress_) progress_->Restart();
}

}  // namespace ombrelay::cli
