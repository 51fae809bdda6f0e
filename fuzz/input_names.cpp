#include "fuzz/input_names.h"

namespace ombrelay::fuzz {

IniNames NamesInIni(std::string_view text, std::size_t most) {
  IniNames names;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    const std::size_t open = line.find('[');
    const std::size_t equals = line.find('=');
    if (open != std::string_view::npos && equals == std::string_view::npos) {
      if (names.sections.size() < most) {
        const std::string_view rest = line.substr(open + 1);
        names.sections.emplace_back(rest.substr(0, rest.find(']')));
      }
    } else if (equals != std::string_view::npos && names.keys.size() < most) {
      names.keys.emplace_back(line.substr(0, equals));
    }
  }
  return names;
}

}  // namespace ombrelay::fuzz
