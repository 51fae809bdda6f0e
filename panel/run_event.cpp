#include "panel/run_event.h"

#include "shell/numeric.h"
#include "shell/platform.h"

namespace ombrelay {
namespace {

// Handlers under way: a wait in one can let another run.
int running = 0;

struct Running {
  Running() { ++running; }
  ~Running() { --running; }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;
};

}  // namespace

void RunEvent(const std::function<void()>& handler) {
  const Running under;
  try {
    handler();
  } catch (const RuntimeError& error) {
    MsgBox(std::string("Run-time error: ") + error.what(), MessageStyle::Error, "Ombrelay");
  }
}

bool EventRunning() {
  return running > 0;
}

}  // namespace ombrelay
