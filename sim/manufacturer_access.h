#pragma once
// The ManufacturerAccess command: the word register through which nearly every request reaches
// the gauge. A written word may start an action (select a block, change a mode, ask for a value
// that a read of the same command then answers); the gauge's parts register the words they
// understand.

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "sim/command_set.h"

namespace ombrelay::sim {

class ManufacturerAccess {
 public:
  // Installs itself as the command's word read and word write.
  ManufacturerAccess(CommandSet& commands, std::uint8_t command);
  ManufacturerAccess(const ManufacturerAccess&) = delete;
  ManufacturerAccess& operator=(const ManufacturerAccess&) = delete;

  // Writing word does action too, from now on, after what it did before.
  void On(std::uint16_t word, std::function<void()> action);
  // The last word written, 0 before any; a read of the command answers it unless the word's
  // action gave an answer of its own.
  std::uint16_t LastWord() const { return lastWord_; }
  // For an action: reads of the command answer value until the next word is written.
  void AnswerReadsWith(std::uint16_t value) { answer_ = value; }

 private:
  // Every word is acknowledged, as on a real gauge; one it does not know does nothing.
  bool Write(std::uint16_t word);

  std::map<std::uint16_t, std::vector<std::function<void()>>> actions_;
  std::uint16_t lastWord_ = 0;
  std::optional<std::uint16_t> answer_;
};

}  // namespace ombrelay::sim
