#include "platforms/console_platform.h"

#include <sys/prctl.h>

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

// How long a pump inside a wait sleeps once the wait should have ended but the clock it reads,
// in float steps, has not yet caught up.
constexpr std::int64_t kPumpWaitMs = 1;
// How early a plain wait wakes to finish its last stretch awake.
constexpr std::chrono::microseconds kWakeUpLead{80};

}  // namespace

ConsolePlatform::ConsolePlatform(std::ostream& log, std::uint32_t seed) : log_(log), random_(seed) {
  // The waits are the bus protocol's own, a few milliseconds each: the kernel's default slack of
  // 50 us on every sleep of this thread would add up to a visible share of them.
  prctl(PR_SET_TIMERSLACK, 1UL);
}

void ConsolePlatform::MessageBox(const std::string& text, MessageStyle style,
                                 const std::string& /*title*/) {
  WriteMessageLine(log_, text, style);
}

void ConsolePlatform::Sleep(std::int32_t milliseconds) {
  if (milliseconds <= 0) return;
  // The kernel wakes a sleeper some tens of microseconds late; sleeping to just short of the
  // end and yielding the rest keeps a run of 3 ms waits from growing by a percent.
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  std::this_thread::sleep_until(end - kWakeUpLead);
  while (std::chrono::steady_clock::now() < end)
    std::this_thread::yield();
}

float ConsolePlatform::SecondsSinceMidnight() {
  if (dayStart_) {
    return std::chrono::duration<float>(std::chrono::steady_clock::now() - *dayStart_).count();
  }
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
  if (!waitEnd_) return;
  const auto now = std::chrono::steady_clock::now();
  auto until = *waitEnd_ > now ? *waitEnd_ : now + std::chrono::milliseconds(kPumpWaitMs);
  if (const std::optional<std::int64_t> next = timers_.NextDueMs()) {
    until = std::min(until,
                     now + std::chrono::milliseconds(std::max<std::int64_t>(*next - NowMs(), 0)));
  }
  std::this_thread::sleep_until(until);
}

void ConsolePlatform::PumpingWaitStarted(float seconds) {
  waitEnd_ = std::chrono::steady_clock::now() +
             std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                 std::chrono::duration<float>(std::max(seconds, 0.0F)));
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
