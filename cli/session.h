#pragma once
// One run's bus and platform: the opened host behind a recording one (keys masked, logged when
// asked), the panels' boxes kept and written as lines, progress at a terminal, and the shared
// state pointed at the application directory.

#include <memory>
#include <optional>
#include <string>

#include "cli/environment.h"
#include "cli/message_log_platform.h"
#include "cli/options.h"
#include "cli/wait_progress_platform.h"
#include "hosts/recording_host.h"

namespace ombrelay::cli {

class Session {
 public:
  // Nothing, with a sentence for the user in error, when the bus or the log cannot be opened.
  static std::unique_ptr<Session> Open(const Options& options, Environment& env,
                                       std::string& error);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // What the panels are given.
  Host& GetHost() { return recording_; }
  Platform& GetPlatform();
  // What the run showed and wrote so far.
  const std::vector<ShownMessage>& Messages() const { return messages_.Messages(); }
  const std::vector<BusOperation>& Operations() const { return recording_.Operations(); }
  // Takes the progress line away before results are printed; a wait after them counts anew.
  void EndProgress();

 private:
  Session(std::unique_ptr<Host> bus, Environment& env);

  std::unique_ptr<Host> bus_;
  RecordingHost recording_;
  MessageLogPlatform messages_;
  std::optional<WaitProgressPlatform> progress_;
};

}  // namespace ombrelay::cli
