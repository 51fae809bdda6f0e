#pragma once
// The panels' message boxes in a run of the command line: each is kept for the JSON report and
// written as a line on standard error, "message: plain: TEXT" or "message: error: TEXT", and
// returns at once, as nobody is there to close it.

#include <iosfwd>
#include <string>
#include <vector>

#include "platforms/forwarding_platform.h"
#include "report/shown_message.h"

namespace ombrelay::cli {

class MessageLogPlatform : public ForwardingPlatform {
 public:
  MessageLogPlatform(Platform& inner, std::ostream& err) : ForwardingPlatform(inner), err_(err) {}

  // Not passed on: the line here is the box.
  void MessageBox(const std::string& text, MessageStyle style, const std::string& title) override;

  // Every box shown so far, oldest first.
  const std::vector<ShownMessage>& Messages() const { return messages_; }

 private:
  std::ostream& err_;
  std::vector<ShownMessage> messages_;
};

}  // namespace ombrelay::cli
