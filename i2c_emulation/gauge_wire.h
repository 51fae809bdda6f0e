#pragma once
// The simulated gauge at the far end of the wire: I2C messages in, the gauge's word and block
// transfers out. A write [command, count, data...] on a command that takes blocks is a block
// write, a write [command, low, high] a word write, each optionally followed by its PEC; a write
// [command] followed by a read is a read, answered [count, data...] or [low, high] as the
// command decides. The gauge follows every answer with its PEC, then leaves the bus high (0xFF)
// for as long as the master goes on reading.

#include <linux/i2c.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "sim/gauge.h"

namespace ombrelay::i2c_emulation {

// The gauge's 7-bit address: 0x16 and 0x17 on the wire.
inline constexpr std::uint16_t kGaugeAddress = 0x0B;

// What the gauge sends on a read, byte by byte.
class Answer {
 public:
  Answer() = default;
  explicit Answer(sim::Bytes bytes) : bytes_(std::move(bytes)) {}
  std::uint8_t operator[](std::size_t index) const {
    return index < bytes_.size() ? bytes_[index] : kIdleByte;
  }

 private:
  static constexpr std::uint8_t kIdleByte = 0xFF;
  sim::Bytes bytes_;
};

class GaugeWire {
 public:
  // One exchange with the gauge; a transfer is a series of them.
  struct Step {
    enum class Kind { Quick, WordWrite, BlockWrite, WordRead, BlockRead };
    Kind kind = Kind::Quick;
    std::uint8_t command = 0;
    std::uint16_t word = 0;
    std::span<const std::uint8_t> block;
    std::size_t reply = 0;  // the read message that takes a read's answer

    bool IsRead() const { return kind == Kind::WordRead || kind == Kind::BlockRead; }
  };

  // Nothing: a bus with no gauge on it.
  explicit GaugeWire(sim::Gauge* gauge) : gauge_(gauge) {}

  // The steps of a whole transfer, worked out before any of them reaches the gauge, so that a
  // transfer the gauge would not acknowledge changes nothing. Nothing for a message to another
  // address, a bus with no gauge, a shape the gauge does not take or a write with a wrong PEC.
  std::optional<std::vector<Step>> Plan(std::span<const i2c_msg> messages) const;
  // Carries out one step: what the gauge sends back (nothing to read after a write), or nothing
  // when the gauge does not acknowledge it.
  std::optional<Answer> Run(const Step& step);

 private:
  std::optional<Step> PlanWrite(std::span<const std::uint8_t> bytes) const;
  std::optional<Step> PlanRead(const i2c_msg& write, const i2c_msg& read) const;

  sim::Gauge* gauge_;
};

}  // namespace ombrelay::i2c_emulation
