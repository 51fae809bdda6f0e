#include "platforms/console_platform.h"

#include <algorithm>
#include <ctime>
#include <functional>
#include <optional>
#include <thread>

#include "panel/run_event.h"
#include "platforms/message_line.h"
#include "platforms/unit_random.h"

namespace ombrelay {
namespace {

// The longest one pump waits: short enough that a busy wait still sees its clock move.
constexpr std::int64_t kPumpWaitMs = 1;

}  // namespace

ConsolePlatform::ConsolePlatform(std::ostream& log, std::uint32_t seed)
    : log_(log), random_(seed) {}

void ConsolePlatform::MessageBox(const std::string& text, MessageStyle style,
                                 const std::string& /*title*/) {
  WriteMessageLine(log_, text, style);
}

void ConsolePlatform::Sleep(std::int32_t milliseconds) {
  if (milliseconds > 0) std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

float ConsolePlatform::SecondsSinceMidnight() {
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  std::tm local{};
  localtime_r(&seconds, &local);
  const auto sinceSecond = now - std::chrono::time_point_cast<std::chrono::seconds>(now);
  const double milliseconds = std::chrono::duration<double, std::milli>(sinceSecond).count();
  const double secondOfDay = (local.tm_hour * 60.0 + local.tm_min) * 60.0 + local.tm_sec;
  return static_cast<float>(secondOfDay + milliseconds / 1000.0);
}

void ConsolePlatform::PumpEvents() {
  // Each tick is an event of its own: a run-time error in it is shown and goes no further.
  timers_.RunDue(NowMs(), [](const std::function<void()>& tick) { RunEvent(tick); });
  std::int64_t waitMs = kPumpWaitMs;
  if (const std::optional<std::int64_t> next = timers_.NextDueMs()) {
    waitMs = std::min(waitMs, *next - NowMs());
  }
  if (waitMs > 0) std::this_thread::sleep_for(std::chrono::milliseconds(waitMs));
}

void ConsolePlatform::Randomize() {
  random_.seed(static_cast<std::mt19937::result_type>(SecondsSinceMidnight() * 1000.0F));
}

float ConsolePlatform::Random() {
  return UnitRandom(std::uniform_int_distribution<std::uint32_t>(0, kUnitRandomSteps - 1)(random_));
}

void ConsolePlatform::AttachTimer(Timer& timer) {
  timers_.Attach(timer, NowMs());
}

void ConsolePlatform::DetachTimer(Timer& timer) {
  timers_.Detach(timer);
}

void ConsolePlatform::TimerChanged(Timer& timer) {
  timers_.Changed(timer, NowMs());
}

std::int64_t ConsolePlatform::NowMs() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                               start_)
      .count();
}

}  // namespace ombrelay
