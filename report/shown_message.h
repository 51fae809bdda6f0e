#pragma once
// A message box as the panels showed it: what the command line prints and a report keeps.

#include <string>

#include "shell/platform.h"

namespace ombrelay {

struct ShownMessage {
  std::string text;
  MessageStyle style = MessageStyle::Plain;
  std::string title;
};

}  // namespace ombrelay
