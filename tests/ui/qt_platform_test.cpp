#include "ui/qt_platform.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <ctime>
#include <sstream>

#include "shell/controls.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

class QtPlatformTest : public ::testing::Test {
 protected:
  QtPlatformTest() {
    platform.SetUnattended(true);
    g_oPlatform = &platform;
  }
  ~QtPlatformTest() override { ResetSharedState(); }

  std::ostringstream log;
  QtPlatform platform{log};
};

TEST_F(QtPlatformTest, UnattendedBoxesAreLinesOnTheLog) {
  platform.MessageBox("Pack is sealed.  Please unseal ", MessageStyle::Plain, {});
  platform.MessageBox("Unable to communicate with device.", MessageStyle::Error, "Calibration");
  EXPECT_EQ(log.str(),
            "message: plain: Pack is sealed.  Please unseal \n"
            "message: error: Unable to communicate with device.\n");
}

TEST_F(QtPlatformTest, BoxesWaitForOkWithTheStopIconForErrors) {
  platform.SetUnattended(false);
  QApplication::setApplicationDisplayName("Bench");
  struct Seen {
    QMessageBox::Icon icon;
    QString title;
    QString text;
    Qt::TextFormat format;
  };
  std::vector<Seen> seen;
  const auto answer = [&] {
    QTimer::singleShot(0, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      seen.push_back({box->icon(), box->windowTitle(), box->text(), box->textFormat()});
      box->button(QMessageBox::Ok)->click();
    });
  };
  answer();
  platform.MessageBox("Can not set to calibration mode.", MessageStyle::Error, {});
  answer();
  platform.MessageBox("Invalid value entered! <b>", MessageStyle::Plain, "Calibration");

  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[0].icon, QMessageBox::Critical);
  EXPECT_EQ(seen[0].title, "Bench");
  EXPECT_EQ(seen[0].text, "Can not set to calibration mode.");
  EXPECT_EQ(seen[1].icon, QMessageBox::NoIcon);
  EXPECT_EQ(seen[1].title, "Calibration");
  EXPECT_EQ(seen[1].text, "Invalid value entered! <b>");
  EXPECT_EQ(seen[1].format, Qt::PlainText) << "the panels' texts are never markup";
  EXPECT_TRUE(log.str().empty());
}

TEST_F(QtPlatformTest, TimerTicksWhileEnabledOnlyAndItsRunTimeErrorBecomesAnErrorBox) {
  Timer timer;
  int ticks = 0;
  int refreshes = 0;
  timer.Tick = [&] { ++ticks; };
  timer.SetInterval(10);
  platform.AttachTimer(timer);
  platform.SetRefreshHook([&] { ++refreshes; });

  DelayMilliseconds(60);
  EXPECT_EQ(ticks, 0) << "a timer starts disabled";

  timer.SetEnabled(true);
  DelayMilliseconds(100);
  EXPECT_GE(ticks, 3);
  EXPECT_GE(refreshes, ticks) << "the view catches up after every tick";

  timer.SetEnabled(false);
  const int ticksWhenDisabled = ticks;
  DelayMilliseconds(60);
  platform.DetachTimer(timer);
  timer.SetEnabled(true);
  DelayMilliseconds(60);
  EXPECT_EQ(ticks, ticksWhenDisabled) << "neither a disabled nor a detached timer is driven";

  timer.Tick = [&] {
    timer.SetEnabled(false);
    throw RuntimeError(kOverflow);
  };
  platform.AttachTimer(timer);
  DelayMilliseconds(50);
  EXPECT_EQ(log.str(), "message: error: Run-time error: Overflow\n");
  platform.DetachTimer(timer);
}

TEST_F(QtPlatformTest, PumpingWaitDoesNotSpin) {
  const std::clock_t cpuStart = std::clock();
  QElapsedTimer wall;
  wall.start();
  DelaySeconds(0.2F);
  const double wallSeconds = static_cast<double>(wall.elapsed()) / 1000.0;
  const double cpuSeconds = static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
  EXPECT_GE(wallSeconds, 0.19);
  EXPECT_LT(cpuSeconds, 0.5 * wallSeconds);
}

TEST_F(QtPlatformTest, PumpRunsPendingEventsButSleepDoesNot) {
  bool fired = false;
  QTimer::singleShot(0, [&] { fired = true; });
  platform.Sleep(20);
  EXPECT_FALSE(fired);
  platform.PumpEvents();
  EXPECT_TRUE(fired);
}

}  // namespace
}  // namespace ombrelay
