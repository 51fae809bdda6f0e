#include "sim/manufacturer_access.h"

#include <utility>

namespace ombrelay::sim {

ManufacturerAccess::ManufacturerAccess(CommandSet& commands, std::uint8_t command) {
  commands.OnReadWord(
      command, [this]() -> std::optional<std::uint16_t> { return answer_.value_or(lastWord_); });
  commands.OnWriteWord(command, [this](std::uint16_t word) { return Write(word); });
}

void ManufacturerAccess::On(std::uint16_t word, std::function<void()> action) {
  actions_[word] = std::move(action);
}

bool ManufacturerAccess::Write(std::uint16_t word) {
  lastWord_ = word;
  answer_.reset();
  if (const auto action = actions_.find(word); action != actions_.end()) action->second();
  return true;
}

}  // namespace ombrelay::sim
