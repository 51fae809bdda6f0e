#include "platforms/console_platform.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <sstream>
#include <vector>

#include "shell/controls.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

class ConsolePlatformTest : public ::testing::Test {
 protected:
  ConsolePlatformTest() { g_oPlatform = &platform; }
  ~ConsolePlatformTest() override {
    platform.DetachTimer(timer);
    ResetSharedState();
  }

  // Pumps as a busy wait does, for this long on the machine's clock.
  void PumpFor(int milliseconds) {
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (Clock::now() < end)
      platform.PumpEvents();
  }

  std::ostringstream log;
  ConsolePlatform platform{log, 7};
  Timer timer;
  std::vector<Clock::time_point> ticks;
};

TEST_F(ConsolePlatformTest, BoxesAreLinesAndTicksAreEventsOfTheirOwn) {
  platform.MessageBox("Pack is sealed.  Please unseal ", MessageStyle::Plain, "Calibration");
  platform.MessageBox("Can not set to calibration mode.", MessageStyle::Error, {});
  timer.Tick = [this] {
    timer.SetEnabled(false);
    throw RuntimeError(kOverflow);
  };
  timer.SetInterval(5);
  platform.AttachTimer(timer);
  timer.SetEnabled(true);
  PumpFor(30);
  EXPECT_EQ(log.str(),
            "message: plain: Pack is sealed.  Please unseal \n"
            "message: error: Can not set to calibration mode.\n"
            "message: error: Run-time error: Overflow\n");
}

TEST_F(ConsolePlatformTest, TicksFollowRealTimeWhileEnabledOnly) {
  constexpr int kInterval = 20;
  timer.Tick = [this] { ticks.push_back(Clock::now()); };
  timer.SetInterval(kInterval);
  platform.AttachTimer(timer);
  PumpFor(100);
  EXPECT_TRUE(ticks.empty()) << "a timer starts disabled";

  const auto enabled = Clock::now();
  timer.SetEnabled(true);
  PumpFor(300);
  // Never early; a loaded machine may make them late, but not absent.
  ASSERT_GE(ticks.size(), 5u);
  EXPECT_LE(ticks.size(), 15u);
  EXPECT_GE(Milliseconds(ticks.front() - enabled).count(), kInterval - 1);
  for (std::size_t i = 1; i < ticks.size(); ++i)
    EXPECT_GE(Milliseconds(ticks[i] - ticks[i - 1]).count(), kInterval - 1) << "tick " << i;

  // Sleep blocks without running what falls due; the next pump catches up with one tick.
  const std::size_t beforeSleep = ticks.size();
  const auto sleepStart = Clock::now();
  platform.Sleep(3 * kInterval);
  EXPECT_GE(Milliseconds(Clock::now() - sleepStart).count(), 3 * kInterval);
  EXPECT_EQ(ticks.size(), beforeSleep);
  platform.PumpEvents();
  EXPECT_EQ(ticks.size(), beforeSleep + 1);

  timer.SetEnabled(false);
  const std::size_t whenDisabled = ticks.size();
  PumpFor(100);
  EXPECT_EQ(ticks.size(), whenDisabled);

  platform.DetachTimer(timer);
  timer.SetEnabled(true);
  PumpFor(100);
  EXPECT_EQ(ticks.size(), whenDisabled) << "a detached timer is no longer driven";
}

TEST_F(ConsolePlatformTest, PumpingWaitSleepsInsteadOfSpinning) {
  // A timer far from due must not shorten the pump's wait either.
  timer.SetInterval(60000);
  platform.AttachTimer(timer);
  timer.SetEnabled(true);
  const float clockStart = platform.SecondsSinceMidnight();
  const std::clock_t cpuStart = std::clock();
  const auto wallStart = Clock::now();
  DelayMilliseconds(200);
  const double wall = Milliseconds(Clock::now() - wallStart).count();
  const double cpu = 1000.0 * static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
  EXPECT_GE(wall, 180.0);
  EXPECT_LT(cpu, 0.25 * wall);

  const float moved = platform.SecondsSinceMidnight() - clockStart;
  if (moved >= 0.0F) {  // else the clock has just wrapped at midnight
    EXPECT_GE(moved, 0.18F);
    EXPECT_LT(moved, 1.0F);
  }
  EXPECT_GE(clockStart, 0.0F);
  EXPECT_LT(clockStart, 86400.0F);
}

}  // namespace
}  // namespace ombrelay
