#pragma once
// The platform of the panels inside a Qt application: message boxes, waits that keep the window
// alive without burning a core, and one QTimer behind each of the panels' timers.

#include <QRandomGenerator>
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>

#include "shell/platform.h"

class QTimer;

namespace ombrelay {

class QtPlatform : public Platform {
 public:
  // unattendedLog receives the message lines of unattended runs.
  explicit QtPlatform(std::ostream& unattendedLog);
  ~QtPlatform() override;
  QtPlatform(const QtPlatform&) = delete;
  QtPlatform& operator=(const QtPlatform&) = delete;

  void MessageBox(const std::string& text, MessageStyle style, const std::string& title) override;
  void Sleep(std::int32_t milliseconds) override;
  float SecondsSinceMidnight() override;
  void PumpEvents() override;
  void PumpingWaitStarted(float seconds) override;
  void PumpingWaitEnded() override;
  void Progress(const std::string& doing, int done, int total) override;
  void ProgressEnded() override;
  void Randomize() override;
  float Random() override;
  void AttachTimer(Timer& timer) override;
  void DetachTimer(Timer& timer) override;
  void TimerChanged(Timer& timer) override;

  // For runs without a user: every box is answered at once and written to the log as one line,
  // "message: plain: TEXT" or "message: error: TEXT".
  void SetUnattended(bool unattended) { unattended_ = unattended; }
  // What a user is shown of a long procedure: its text, done of total steps (total 0: no
  // count), and the pumping wait it is in, in seconds (0: none). All empty and 0: nothing goes on.
  struct ProgressState {
    std::string doing;
    int done = 0;
    int total = 0;
    float waitSeconds = 0;
  };
  // Called as the state changes.
  void SetProgressHook(std::function<void(const ProgressState&)> hook) {
    progressHook_ = std::move(hook);
  }

  // Brings the views up to date with their controls: run after each pump and each timer tick,
  // and before a box covers the window.
  void SetRefreshHook(std::function<void()> refresh) { refresh_ = std::move(refresh); }

 private:
  void Refresh() const;

  std::ostream& unattendedLog_;
  bool unattended_ = false;
  std::function<void()> refresh_;
  void TellProgress() const;
  ProgressState progress_;
  std::function<void(const ProgressState&)> progressHook_;
  std::map<Timer*, std::unique_ptr<QTimer>> timers_;
  QRandomGenerator random_ = QRandomGenerator::securelySeeded();
};

}  // namespace ombrelay
