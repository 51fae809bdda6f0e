#include "sim/selected_block.h"

#include <utility>

namespace ombrelay::sim {

SelectedBlock::SelectedBlock(CommandSet& commands, std::uint8_t command) {
  commands.OnReadBlock(command, [this]() -> std::optional<Bytes> {
    return selected_.read ? selected_.read() : std::nullopt;
  });
  commands.OnWriteBlock(command,
                        [this](std::span<const std::uint8_t> data) { return Write(data); });
}

// The unclaimed writer may select; the selection's own write is over by then.
bool SelectedBlock::Write(std::span<const std::uint8_t> data) {
  if (selected_.write && selected_.write(data)) return true;
  return unclaimed_ && unclaimed_(data);
}

void SelectedBlock::Select(Source source) {
  selected_ = std::move(source);
}

}  // namespace ombrelay::sim
