#pragma once
// What the panels need of their surroundings besides the bus: message boxes, waits, the clock,
// event pumping, the pseudo-random generator and the driving of timers.

#include <cstdint>
#include <string>

namespace ombrelay {

class Timer;

enum class MessageStyle { Plain, Error };

class Platform {
 public:
  virtual ~Platform() = default;

  // Shows a box with an OK button and returns when the user has closed it. An empty title
  // leaves the title to the platform.
  virtual void MessageBox(const std::string& text, MessageStyle style,
                          const std::string& title = {}) = 0;
  // Blocks without pumping events.
  virtual void Sleep(std::int32_t milliseconds) = 0;
  // Seconds since midnight, as the panels' busy waits read it.
  virtual float SecondsSinceMidnight() = 0;
  // Lets pending events run: timer ticks, clicks, repaints.
  virtual void PumpEvents() = 0;
  // Told before and after each wait that pumps events, with its length: a platform that
  // accounts for the time a run must spend waiting counts it, and a test tells these waits from
  // the events they pump.
  virtual void PumpingWaitStarted(float /*seconds*/) {}
  virtual void PumpingWaitEnded() {}
  // Told how far a long procedure has got, so that a user sees it going on: what it does, and
  // done of total steps (total 0: it has no count). Nothing is sent or waited for because of it.
  virtual void Progress(const std::string& /*doing*/, int /*done*/, int /*total*/) {}
  // The procedure last told of by Progress has ended, however it ended.
  virtual void ProgressEnded() {}
  // Seeds the pseudo-random generator afresh from the clock.
  virtual void Randomize() = 0;
  // The next pseudo-random number in [0, 1).
  virtual float Random() = 0;

  // Drive timer: run its Tick every Interval milliseconds while it is enabled. The platform
  // hears of every change of Enabled from the timer itself.
  virtual void AttachTimer(Timer& timer) = 0;
  virtual void DetachTimer(Timer& timer) = 0;
  // Called by an attached timer when Enabled or Interval changed.
  virtual void TimerChanged(Timer& timer) = 0;
};

// A long procedure's progress through g_oPlatform, from its start to the end of its scope.
class ProgressReport {
 public:
  ProgressReport(std::string doing, int total);
  ~ProgressReport();
  ProgressReport(const ProgressReport&) = delete;
  ProgressReport& operator=(const ProgressReport&) = delete;

  void Step(int done);

 private:
  std::string doing_;
  int total_;
};

// A message box of the panels, through g_oPlatform.
void MsgBox(const std::string& text, MessageStyle style = MessageStyle::Plain,
            const std::string& title = {});

}  // namespace ombrelay
