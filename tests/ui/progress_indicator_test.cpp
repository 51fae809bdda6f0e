// What the bench's status bar says of a long operation, from what the panels' platform tells:
// the steps of a count, the wait it is in, and nothing once it is over or for a short wait.

#include "app/progress_indicator.h"

#include <gtest/gtest.h>

#include <QProgressBar>
#include <sstream>

#include "ui/qt_platform.h"

namespace ombrelay {
namespace {

TEST(ProgressIndicator, SaysWhatGoesOnHowFarAndWhatItWaitsFor) {
  std::ostringstream log;
  QtPlatform platform(log);
  ProgressIndicator indicator;
  platform.SetProgressHook([&](const QtPlatform::ProgressState& now) {
    indicator.Show(now.doing, now.done, now.total, now.waitSeconds);
  });
  const auto* bar = indicator.findChild<QProgressBar*>();
  ASSERT_NE(bar, nullptr);

  platform.Progress("Capturing raw calibration samples", 2, 5);
  EXPECT_EQ(indicator.Text(), "Capturing raw calibration samples: 2 of 5");
  EXPECT_EQ(bar->maximum(), 5);
  EXPECT_EQ(bar->value(), 2);

  platform.Progress("Writing calibration dataflash", 0, 0);
  platform.PumpingWaitStarted(2.0F);
  EXPECT_EQ(indicator.Text(), "Writing calibration dataflash, waiting 2.0 s");
  EXPECT_EQ(bar->maximum(), 0) << "no count: the bar only moves";
  platform.ProgressEnded();
  EXPECT_EQ(indicator.Text(), "Waiting 2.0 s") << "the wait goes on after its procedure";
  platform.PumpingWaitEnded();
  EXPECT_EQ(indicator.Text(), "");

  platform.PumpingWaitStarted(0.25F);
  EXPECT_EQ(indicator.Text(), "") << "a short wait is not worth a word";
}

}  // namespace
}  // namespace ombrelay
