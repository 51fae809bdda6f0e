#include "ui/qt_platform.h"

#include <QApplication>
#include <QEventLoop>
#include <QMessageBox>
#include <QThread>
#include <QTime>
#include <QTimer>

#include "panel/run_event.h"
#include "platforms/message_line.h"
#include "platforms/unit_random.h"
#include "shell/controls.h"

namespace ombrelay {
namespace {

// How long one pump waits for further events: long enough that a busy wait sleeps instead of
// spinning, short enough that it still sees its clock move.
constexpr int kPumpWaitMs = 1;

}  // namespace

QtPlatform::QtPlatform(std::ostream& unattendedLog) : unattendedLog_(unattendedLog) {}

QtPlatform::~QtPlatform() {
  for (auto& entry : timers_)
    entry.first->BindPlatform(nullptr);
}

void QtPlatform::MessageBox(const std::string& text, MessageStyle style, const std::string& title) {
  const bool error = style == MessageStyle::Error;
  if (unattended_) {
    WriteMessageLine(unattendedLog_, text, style);
    return;
  }
  Refresh();
  QMessageBox box(
      error ? QMessageBox::Critical : QMessageBox::NoIcon,
      title.empty() ? QGuiApplication::applicationDisplayName() : QString::fromStdString(title),
      QString::fromStdString(text), QMessageBox::Ok, QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

void QtPlatform::Sleep(std::int32_t milliseconds) {
  if (milliseconds > 0) QThread::msleep(static_cast<unsigned long>(milliseconds));
}

float QtPlatform::SecondsSinceMidnight() {
  return static_cast<float>(QTime::currentTime().msecsSinceStartOfDay()) / 1000.0F;
}

void QtPlatform::PumpEvents() {
  QEventLoop loop;
  QTimer::singleShot(kPumpWaitMs, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
  Refresh();
}

void QtPlatform::PumpingWaitStarted(float seconds) {
  progress_.waitSeconds = seconds;
  TellProgress();
}

void QtPlatform::PumpingWaitEnded() {
  progress_.waitSeconds = 0;
  TellProgress();
}

void QtPlatform::Progress(const std::string& doing, int done, int total) {
  progress_.doing = doing;
  progress_.done = done;
  progress_.total = total;
  TellProgress();
}

void QtPlatform::ProgressEnded() {
  progress_.doing.clear();
  progress_.done = 0;
  progress_.total = 0;
  TellProgress();
}

void QtPlatform::TellProgress() const {
  if (progressHook_) progressHook_(progress_);
}

void QtPlatform::Randomize() {
  random_.seed(static_cast<quint32>(QTime::currentTime().msecsSinceStartOfDay()));
}

float QtPlatform::Random() {
  return UnitRandom(random_.bounded(kUnitRandomSteps));
}

void QtPlatform::AttachTimer(Timer& timer) {
  auto& qtimer = timers_[&timer];
  if (!qtimer) {
    qtimer = std::make_unique<QTimer>();
    QObject::connect(qtimer.get(), &QTimer::timeout, [this, &timer] {
      if (timer.Tick) RunEvent(timer.Tick);
      Refresh();
    });
  }
  timer.BindPlatform(this);
  TimerChanged(timer);
}

void QtPlatform::DetachTimer(Timer& timer) {
  timer.BindPlatform(nullptr);
  timers_.erase(&timer);
}

void QtPlatform::TimerChanged(Timer& timer) {
  const auto found = timers_.find(&timer);
  if (found == timers_.end()) return;
  QTimer& qtimer = *found->second;
  if (timer.Enabled() && timer.Interval() > 0) {
    // Like the panels' timers, a change of interval starts the count afresh.
    qtimer.start(timer.Interval());
  } else {
    qtimer.stop();
  }
}

void QtPlatform::Refresh() const {
  if (refresh_) refresh_();
}

}  // namespace ombrelay
