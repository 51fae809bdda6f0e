#pragma once
// A data command that carries whatever the last selecting transfer chose. One such command
// serves the identification block, the dataflash rows and the security exchanges in turn, so
// its meaning is not the command's but the selection's.

#include <cstdint>
#include <span>
#include <utility>

#include "sim/command_set.h"

namespace ombrelay::sim {

class SelectedBlock {
 public:
  struct Source {
    CommandSet::BlockReader read;
    // Empty when the selected data cannot be written: the write is not acknowledged.
    CommandSet::BlockWriter write;
  };

  // Installs itself as the command's block read and block write. Until something is selected,
  // no read is acknowledged, nor any write the unclaimed writer does not take.
  SelectedBlock(CommandSet& commands, std::uint8_t command);
  SelectedBlock(const SelectedBlock&) = delete;
  SelectedBlock& operator=(const SelectedBlock&) = delete;

  void Select(Source source);
  // Offered each write that the selection does not acknowledge, whatever was selected: a host
  // may start an exchange on the command at any time, without selecting first.
  void OnUnclaimedWrite(CommandSet::BlockWriter write) { unclaimed_ = std::move(write); }

 private:
  bool Write(std::span<const std::uint8_t> data);

  Source selected_;
  CommandSet::BlockWriter unclaimed_;
};

}  // namespace ombrelay::sim
