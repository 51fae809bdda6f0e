#include "sim/command_set.h"

#include <utility>

namespace ombrelay::sim {

void CommandSet::OnReadWord(std::uint8_t command, WordReader reader) {
  wordReaders_[command] = std::move(reader);
}

void CommandSet::OnWriteWord(std::uint8_t command, WordWriter writer) {
  wordWriters_[command] = std::move(writer);
}

void CommandSet::OnReadBlock(std::uint8_t command, BlockReader reader) {
  blockReaders_[command] = std::move(reader);
}

void CommandSet::OnWriteBlock(std::uint8_t command, BlockWriter writer) {
  blockWriters_[command] = std::move(writer);
}

std::optional<std::uint16_t> CommandSet::ReadWord(std::uint8_t command) const {
  const auto& reader = wordReaders_[command];
  return reader ? reader() : std::nullopt;
}

bool CommandSet::WriteWord(std::uint8_t command, std::uint16_t word) const {
  const auto& writer = wordWriters_[command];
  return writer && writer(word);
}

std::optional<Bytes> CommandSet::ReadBlock(std::uint8_t command) const {
  const auto& reader = blockReaders_[command];
  return reader ? reader() : std::nullopt;
}

bool CommandSet::WriteBlock(std::uint8_t command, std::span<const std::uint8_t> data) const {
  const auto& writer = blockWriters_[command];
  return writer && writer(data);
}

}  // namespace ombrelay::sim
