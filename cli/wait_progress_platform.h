#pragma once
// For a user at a terminal: while the panels wait on the gauge, a line on standard error counts
// the seconds since the command began, or since its last printing, so that a calibration of half
// a minute does not look hung. The line is cleared before a message and before results.

#include <cstdint>
#include <iosfwd>

#include "platforms/forwarding_platform.h"
#include "sim/clock.h"

namespace ombrelay::cli {

class WaitProgressPlatform : public ForwardingPlatform {
 public:
  WaitProgressPlatform(Platform& inner, sim::Clock& clock, std::ostream& err);
  ~WaitProgressPlatform() override { Restart(); }
  WaitProgressPlatform(const WaitProgressPlatform&) = delete;
  WaitProgressPlatform& operator=(const WaitProgressPlatform&) = delete;

  void MessageBox(const std::string& text, MessageStyle style, const std::string& title) override;
  void Sleep(std::int32_t milliseconds) override;
  void PumpEvents() override;

  // Takes the line away, if one shows, and counts afresh from now.
  void Restart();

 private:
  // Shows the elapsed seconds when a whole second more has passed.
  void Update();

  sim::Clock& clock_;
  std::ostream& err_;
  std::int64_t startMs_;
  std::int64_t shownSeconds_ = 0;
  bool showing_ = false;
};

}  // namespace ombrelay::cli
