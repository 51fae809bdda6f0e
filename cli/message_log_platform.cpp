#include "cli/message_log_platform.h"

#include "platforms/message_line.h"

namespace ombrelay::cli {

void MessageLogPlatform::MessageBox(const std::string& text, MessageStyle style,
                                    const std::string& title) {
  messages_.push_back({text, style, title});
  WriteMessageLine(err_, text, style);
}

}  // namespace ombrelay::cli
