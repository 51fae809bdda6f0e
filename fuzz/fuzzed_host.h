#pragma once
// A bus whose every answer comes from the fuzzer's bytes, as reply_stream.h lays them out.

#include <cstddef>
#include <cstdint>
#include <span>

#include "fuzz/run_limits.h"
#include "shell/host.h"
#include "sim/clock.h"

namespace ombrelay::fuzz {

class FuzzedHost : public Host {
 public:
  // Delay waits on clock; every operation counts against limits.
  FuzzedHost(std::span<const std::uint8_t> replies, sim::VirtualClock& clock, RunLimits& limits)
      : replies_(replies), clock_(clock), limits_(limits) {}

  Status ReadSMBusBlock_(std::int32_t command, std::span<std::uint8_t> data, std::int16_t& length,
                         std::int16_t address) override;
  Status ReadSMBusBlock(std::int32_t command, std::string& text, std::int16_t address) override;
  Status WriteSMBusBlock(std::int32_t command, std::span<const std::uint8_t> data,
                         std::int16_t length, std::int16_t address) override;
  Status ReadSMBusWord(std::int32_t command, std::uint8_t& high, std::uint8_t& low,
                       std::int16_t address) override;
  Status ReadSMBusWord_(std::int32_t command, std::int16_t& word, std::int16_t address) override;
  Status WriteSMBusWord(std::int32_t command, std::uint8_t high, std::uint8_t low,
                        std::int16_t address) override;
  Status WriteSMBusWord_(std::int32_t command, std::int16_t word, std::int16_t address) override;
  std::int32_t CheckForError() override;
  void Delay(std::int16_t count) override;

 private:
  // The next byte, or nothing once the bytes are spent.
  bool Take(std::uint8_t& byte);
  // A transfer's status: 0 when it succeeded.
  Status Transfer();
  // A block's bytes after its status; false when the block does not fit room.
  bool TakeBlock(std::span<std::uint8_t> room, std::size_t& length);

  std::span<const std::uint8_t> replies_;
  std::size_t next_ = 0;
  int pendingInARow_ = 0;
  sim::VirtualClock& clock_;
  RunLimits& limits_;
};

}  // namespace ombrelay::fuzz
