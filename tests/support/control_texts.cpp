#include "tests/support/control_texts.h"

#include "shell/numeric.h"
#include "shell/utils.h"

namespace ombrelay::testing {

std::string ControlTexts::Visible(const std::string& text) {
  std::string shown;
  for (const char c : text) {
    if (c == '\r') {
      shown += "\\r";
    } else if (c == '\n') {
      shown += "\\n";
    } else {
      shown += c;
    }
  }
  return shown;
}

std::string ControlTexts::Aligned(TextAlignment alignment) {
  switch (alignment) {
    case TextAlignment::Left:
      return "";
    case TextAlignment::Right:
      return " right";
    case TextAlignment::Centre:
      return " centred";
  }
  return "";
}

std::string ControlTexts::Look(const Control& control) {
  std::string look;
  if (!control.FontName.empty() || control.FontSize > 0 || control.FontBold) {
    look += " font \"" + control.FontName + "\" " + FormatShortest(control.FontSize) +
            (control.FontBold ? " bold" : "");
  }
  if (control.ForeColor != 0) look += " fore " + PadLeftZeros(Hex(control.ForeColor), 6);
  if (control.BackColor) look += " back " + PadLeftZeros(Hex(*control.BackColor), 6);
  return look;
}

}  // namespace ombrelay::testing
