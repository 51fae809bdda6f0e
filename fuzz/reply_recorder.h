#pragma once
// Passes every operation on to another host and writes its answers down as the gauge-reply
// fuzzer's bytes: a run of the simulator becomes a seed that the fuzzed host answers alike.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "shell/host.h"

namespace ombrelay::fuzz {

class ReplyRecorder : public Host {
 public:
  explicit ReplyRecorder(Host& inner) : inner_(inner) {}

  const std::vector<std::uint8_t>& Replies() const { return replies_; }

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
  void Delay(std::int16_t count) override { inner_.Delay(count); }

 private:
  Status RecordStatus(Status status);
  void RecordBlock(std::span<const std::uint8_t> bytes);

  Host& inner_;
  std::vector<std::uint8_t> replies_;
};

}  // namespace ombrelay::fuzz
