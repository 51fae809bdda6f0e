#include "sim/manufacturer_access.h"

#include <utility>

namespace ombrelay::sim {

ManufacturerAccess::ManufacturerAccess(CommandSet& commands, std::uint8_t command) {
  commands.OnReadWord(
      command, [this]() -> std::optional<std::uint16_t> { return answer_.value_or(lastWord_); });
  commands.OnWriteWord(command, [this](std::uint16_t word) { return Write(word); });
}

void ManufacturerAccess::On(std::uint16_t word, std::function<void()> action) {
  actions_[word].push_back(std::move(action));
}

bool ManufacturerAccess::Write(std::uint16_t word) {
  lastWord_ = word;
  answer_.reset();
  if (const auto found = actions_.find(word); found != actions_.end()) {
    for (const auto& action : found->second)
      action();
  }
  return true;
}

}  // namespace ombrelay::sim
