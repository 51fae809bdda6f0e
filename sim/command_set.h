#pragma once
// The gauge's commands: what each SMBus command does on a word or block transfer. The gauge's
// parts (identification, ManufacturerAccess, later the dataflash and the security modes) each
// install the commands they answer, so no one place has to know every command.

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace ombrelay::sim {

using Bytes = std::vector<std::uint8_t>;

class CommandSet {
 public:
  // A handler that gives nothing, or false, leaves the transfer unacknowledged.
  using WordReader = std::function<std::optional<std::uint16_t>()>;
  using WordWriter = std::function<bool(std::uint16_t)>;
  using BlockReader = std::function<std::optional<Bytes>()>;
  using BlockWriter = std::function<bool(std::span<const std::uint8_t>)>;

  // Each replaces whatever the command did before on that kind of transfer.
  void OnReadWord(std::uint8_t command, WordReader reader);
  void OnWriteWord(std::uint8_t command, WordWriter writer);
  void OnReadBlock(std::uint8_t command, BlockReader reader);
  void OnWriteBlock(std::uint8_t command, BlockWriter writer);

  // A command the gauge lacks is not acknowledged (NACK), as on a real gauge: no answer, a
  // failed transfer, and nothing changes.
  std::optional<std::uint16_t> ReadWord(std::uint8_t command) const;
  bool WriteWord(std::uint8_t command, std::uint16_t word) const;
  std::optional<Bytes> ReadBlock(std::uint8_t command) const;
  bool WriteBlock(std::uint8_t command, std::span<const std::uint8_t> data) const;

  // Which transfers a command takes at all, for a bus that sees only bytes on the wire.
  bool AnswersWordReads(std::uint8_t command) const { return wordReaders_[command] != nullptr; }
  bool TakesWordWrites(std::uint8_t command) const { return wordWriters_[command] != nullptr; }
  bool AnswersBlockReads(std::uint8_t command) const { return blockReaders_[command] != nullptr; }
  bool TakesBlockWrites(std::uint8_t command) const { return blockWriters_[command] != nullptr; }

 private:
  static constexpr std::size_t kCommands = 256;

  std::array<WordReader, kCommands> wordReaders_;
  std::array<WordWriter, kCommands> wordWriters_;
  std::array<BlockReader, kCommands> blockReaders_;
  std::array<BlockWriter, kCommands> blockWriters_;
};

}  // namespace ombrelay::sim
