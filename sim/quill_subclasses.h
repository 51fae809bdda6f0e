#pragma once
// QUILL's dataflash access: a word write names a subclass by number, and a block command then
// reads or writes that subclass whole.

#include <cstddef>
#include <cstdint>
#include <optional>

#include "sim/command_set.h"
#include "sim/dataflash.h"
#include "sim/selected_block.h"

namespace ombrelay::sim {

class QuillSubclasses {
 public:
  static constexpr std::uint8_t kSelectCommand = 0x77;
  static constexpr std::uint8_t kDataCommand = 0x78;

  struct Subclass {
    std::uint16_t number;
    std::size_t address;  // where it lies in the dataflash
    std::size_t length;
  };
  static constexpr Subclass kCalibration{104, 0, 32};
  // Configuration/Registers: byte 0 AND 3, plus 1, is the count of cells.
  static constexpr Subclass kRegisters{64, 64, 8};

  // Any word selects: a number that names no subclass leaves nothing selected. A write must
  // carry the subclass's length.
  QuillSubclasses(CommandSet& commands, Dataflash& dataflash);
  QuillSubclasses(const QuillSubclasses&) = delete;
  QuillSubclasses& operator=(const QuillSubclasses&) = delete;

  static std::optional<Subclass> Find(std::uint16_t number);

 private:
  void Select(std::uint16_t number);

  Dataflash& dataflash_;
  SelectedBlock data_;
};

}  // namespace ombrelay::sim
