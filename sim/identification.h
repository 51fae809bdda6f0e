#pragma once
// What the gauge says it is: device number, firmware version and type, build number, in an
// identification block of 11 or 13 bytes read on the shared data command after a request.

#include <cstdint>
#include <utility>

#include "sim/command_set.h"
#include "sim/pending_errors.h"
#include "sim/selected_block.h"

namespace ombrelay::sim {

enum class IdentificationForm {
  Short,             // 11 bytes, the type's low byte in byte 6
  ShortTypeInByte9,  // 11 bytes, 255 in byte 6 and the type's low byte in byte 9
  Long,              // 13 bytes, the form mark 1 in byte 10 and the type in bytes 11 and 12
};

struct Identity {
  std::uint16_t deviceNumber = 0;
  std::uint8_t firmwareMajor = 0;
  std::uint8_t firmwareMinor = 0;
  std::uint16_t buildNumber = 0;
  std::uint16_t firmwareType = 0;
  IdentificationForm form = IdentificationForm::Short;
};

// The block as the gauge sends it; multi-byte numbers high byte first, unused bytes 0.
Bytes BuildIdentificationBlock(const Identity& identity);

// A block write on 0x22 or 0x20 asks for the identification, which the shared data command
// then answers. Some gauges leave bus errors behind after the request, and the program waits
// for the bus to settle before it reads: the write on 0x20 leaves the configured count.
class Identification {
 public:
  static constexpr std::uint8_t kRequestCommand = 0x20;
  // A request is framed by writes on 0x22 before and after; they select as well.
  static constexpr std::uint8_t kRequestFrameCommand = 0x22;

  Identification(Bytes block, CommandSet& commands, SelectedBlock& data, PendingErrors& errors);
  Identification(const Identification&) = delete;
  Identification& operator=(const Identification&) = delete;

  // Any bytes at all, for gauges that answer nonsense.
  void SetBlock(Bytes block) { block_ = std::move(block); }
  const Bytes& Block() const { return block_; }
  void SetRequestErrors(int count) { requestErrors_ = count; }

 private:
  void SelectBlock();

  Bytes block_;
  SelectedBlock& data_;
  PendingErrors& errors_;
  int requestErrors_ = 0;
};

}  // namespace ombrelay::sim
