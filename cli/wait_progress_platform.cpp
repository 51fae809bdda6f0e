#include "cli/wait_progress_platform.h"

#include <ostream>

namespace ombrelay::cli {
namespace {

constexpr std::int64_t kMillisecondsPerSecond = 1000;
constexpr const char* kClearLine = "\r\033[K";

}  // namespace

WaitProgressPlatform::WaitProgressPlatform(Platform& inner, sim::Clock& clock, std::ostream& err)
    : ForwardingPlatform(inner), clock_(clock), err_(err), startMs_(clock.NowMs()) {}

void WaitProgressPlatform::MessageBox(const std::string& text, MessageStyle style,
                                      const std::string& title) {
  Restart();
  ForwardingPlatform::MessageBox(text, style, title);
}

void WaitProgressPlatform::Sleep(std::int32_t milliseconds) {
  ForwardingPlatform::Sleep(milliseconds);
  Update();
}

void WaitProgressPlatform::PumpEvents() {
  ForwardingPlatform::PumpEvents();
  Update();
}

void WaitProgressPlatform::Restart() {
  startMs_ = clock_.NowMs();
  shownSeconds_ = 0;
  if (!showing_) return;
  err_ << kClearLine << std::flush;
  showing_ = false;
}

void WaitProgressPlatform::Update() {
  const std::int64_t seconds = (clock_.NowMs() - startMs_) / kMillisecondsPerSecond;
  if (seconds <= shownSeconds_) return;
  shownSeconds_ = seconds;
  err_ << kClearLine << "ombrelay: waiting for the gauge, " << seconds << " s" << std::flush;
  showing_ = true;
}

}  // namespace ombrelay::cli
