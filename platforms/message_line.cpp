#include "platforms/message_line.h"

#include <ostream>

namespace ombrelay {

void WriteMessageLine(std::ostream& log, const std::string& text, MessageStyle style) {
  log << "message: " << (style == MessageStyle::Error ? "error" : "plain") << ": " << text << '\n'
      << std::flush;
}

}  // namespace ombrelay
