#pragma once
// A platform that passes everything on to another, adds up the waits the program asks for (the
// floor below which no run of the same path can go) and counts the boxes it shows.

#include <cstddef>

#include "platforms/forwarding_platform.h"

namespace ombrelay {

class AccountingPlatform : public ForwardingPlatform {
 public:
  using ForwardingPlatform::ForwardingPlatform;

  // Milliseconds of plain and pumping waits asked for so far.
  double WaitedMs() const { return waitedMs_; }
  std::size_t Messages() const { return messages_; }

  void MessageBox(const std::string& text, MessageStyle style, const std::string& title) override {
    ++messages_;
    ForwardingPlatform::MessageBox(text, style, title);
  }
  void Sleep(std::int32_t milliseconds) override {
    waitedMs_ += milliseconds;
    ForwardingPlatform::Sleep(milliseconds);
  }
  void PumpingWaitStarted(float seconds) override {
    if (seconds > 0) waitedMs_ += seconds * 1000.0;
    ForwardingPlatform::PumpingWaitStarted(seconds);
  }

 private:
  double waitedMs_ = 0.0;
  std::size_t messages_ = 0;
};

}  // namespace ombrelay
