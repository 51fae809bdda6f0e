#pragma once
// Passes every box on and keeps a copy, so that a calibration's report holds the boxes its
// press showed.

#include <vector>

#include "platforms/forwarding_platform.h"
#include "report/shown_message.h"

namespace ombrelay {

class MessageRecordingPlatform : public ForwardingPlatform {
 public:
  using ForwardingPlatform::ForwardingPlatform;

  void MessageBox(const std::string& text, MessageStyle style, const std::string& title) override {
    messages_.push_back({text, style, title});
    ForwardingPlatform::MessageBox(text, style, title);
  }
  const std::vector<ShownMessage>& Messages() const { return messages_; }
  void Clear() { messages_.clear(); }

 private:
  std::vector<ShownMessage> messages_;
};

}  // namespace ombrelay
