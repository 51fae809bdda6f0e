// Timer ticks on virtual time as the bench's event loop gives them: a tick that pumps past its
// interval is not entered again by its own timer, while other timers go on ticking inside it.

#include "platforms/timer_schedule.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platforms/virtual_platform.h"
#include "shell/controls.h"
#include "shell/numeric.h"
#include "sim/clock.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kInterval = 100;

struct Ticking {
  Timer timer;
  int depth = 0;
  int deepest = 0;
  int ticks = 0;

  void Start(Platform& platform) {
    platform.AttachTimer(timer);
    timer.SetInterval(kInterval);
    timer.SetEnabled(true);
  }
  // Counts the tick and, while it runs, pumps for pumpMs of virtual time.
  void Pumping(Platform& platform, std::int64_t pumpMs) {
    timer.Tick = [this, &platform, pumpMs] {
      ++ticks;
      deepest = std::max(deepest, ++depth);
      for (std::int64_t i = 0; i < pumpMs; ++i)
        platform.PumpEvents();
      --depth;
    };
  }
};

class TimerScheduleTest : public ::testing::Test {
 protected:
  // Pumps, a millisecond a step, until ms of virtual time have gone, pumping inside ticks included.
  void RunFor(std::int64_t ms) {
    const std::int64_t end = clock.NowMs() + ms;
    while (clock.NowMs() < end)
      platform.PumpEvents();
  }

  sim::VirtualClock clock;
  // Before the platform, so that they outlive it: it unbinds them as it goes.
  Ticking slow;
  Ticking fast;
  VirtualPlatform platform{clock};
};

TEST_F(TimerScheduleTest, ATickThatOutlastsItsIntervalIsNotEnteredAgainByItsOwnTimer) {
  slow.Pumping(platform, 350);
  fast.Pumping(platform, 0);
  slow.Start(platform);
  fast.Start(platform);
  RunFor(2000);
  EXPECT_EQ(slow.deepest, 1);
  // Ticks at 100, 500, 900, 1300 and 1700 ms: each takes 350, and the ticks that came due
  // meanwhile were let go instead of queueing up behind it.
  EXPECT_EQ(slow.ticks, 5);
  // The other timer goes on ticking every interval, inside the slow one's pumping too.
  EXPECT_EQ(fast.ticks, 20);
}

TEST_F(TimerScheduleTest, ATickEndedByARunTimeErrorTicksAgain) {
  fast.timer.Tick = [&] {
    ++fast.ticks;
    throw RuntimeError(kOverflow);
  };
  fast.Start(platform);
  for (int i = 0; i < 3; ++i)
    EXPECT_THROW(RunFor(kInterval), RuntimeError);
  EXPECT_EQ(fast.ticks, 3);
}

}  // namespace
}  // namespace ombrelay
