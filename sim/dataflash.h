#pragma once
// The gauge's dataflash: one byte store that each family reaches in its own style (a block
// command, numbered subclasses, rows through ManufacturerAccess). While the gauge is Sealed
// nothing of it can be read or written over the bus. A bench can make the next write store a
// wrong byte.

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>

#include "sim/command_set.h"
#include "sim/security_mode.h"

namespace ombrelay::sim {

class Dataflash {
 public:
  static constexpr std::size_t kSize = 1024;
  // What erased flash reads.
  static constexpr std::uint8_t kErased = 0xFF;

  explicit Dataflash(const SecurityMode& security);
  Dataflash(const Dataflash&) = delete;
  Dataflash& operator=(const Dataflash&) = delete;

  // The bus side: nothing, or false, while Sealed or when the bytes reach past the end.
  std::optional<Bytes> Read(std::size_t address, std::size_t count) const;
  bool Write(std::size_t address, std::span<const std::uint8_t> data);

  // The bench side: no seal and no faults; bytes past the end read as erased and are not kept.
  Bytes Peek(std::size_t address, std::size_t count) const;
  void Poke(std::size_t address, std::span<const std::uint8_t> data);

  // The next write over the bus stores byte (counted from the start of what it writes)
  // inverted. Each call spoils one more write, in order.
  void StoreWrongByteOnNextWrite(std::size_t byte) { wrongBytes_.push_back(byte); }

 private:
  bool Reaches(std::size_t address, std::size_t count) const;

  const SecurityMode& security_;
  Bytes bytes_;
  std::deque<std::size_t> wrongBytes_;
};

}  // namespace ombrelay::sim
