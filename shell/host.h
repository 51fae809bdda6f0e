#pragma once
// The bus operations of the host application, which owns the USB-to-SMBus adapter. The panels
// reach the gauge only through these calls; none of them retries, the callers do.

#include <cstdint>
#include <span>
#include <string>

namespace ombrelay {

// 0 when the transfer succeeded, any other value when it failed.
using Status = std::int32_t;

class Host {
 public:
  virtual ~Host() = default;

  // On status 0 the block's data bytes stand in data from index 0 and length holds their count
  // (the SMBus length byte is not among them). An answer longer than data is a failed transfer.
  virtual Status ReadSMBusBlock_(std::int32_t command, std::span<std::uint8_t> data,
                                 std::int16_t& length, std::int16_t address) = 0;
  // Only the status counts.
  virtual Status ReadSMBusBlock(std::int32_t command, std::string& text, std::int16_t address) = 0;
  // Exactly length bytes go out from index 0; a length beyond data is a failed transfer.
  virtual Status WriteSMBusBlock(std::int32_t command, std::span<const std::uint8_t> data,
                                 std::int16_t length, std::int16_t address) = 0;
  virtual Status ReadSMBusWord(std::int32_t command, std::uint8_t& high, std::uint8_t& low,
                               std::int16_t address) = 0;
  // The word as one 16-bit value, bit pattern unchanged.
  virtual Status ReadSMBusWord_(std::int32_t command, std::int16_t& word, std::int16_t address) = 0;
  virtual Status WriteSMBusWord(std::int32_t command, std::uint8_t high, std::uint8_t low,
                                std::int16_t address) = 0;
  virtual Status WriteSMBusWord_(std::int32_t command, std::int16_t word, std::int16_t address) = 0;
  // 0 when no bus error is pending; each call takes one pending error.
  virtual std::int32_t CheckForError() = 0;
  // Returns after a wait of count milliseconds.
  virtual void Delay(std::int16_t count) = 0;
};

}  // namespace ombrelay
