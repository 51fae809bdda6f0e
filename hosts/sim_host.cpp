#include "hosts/sim_host.h"

#include <algorithm>

namespace ombrelay {
namespace {

constexpr std::int32_t kLargestCommand = 255;
// The SMBus byte count limits a block to 255 bytes.
constexpr std::int16_t kLargestBlock = 255;

std::uint8_t Command(std::int32_t command) {
  return static_cast<std::uint8_t>(command);
}

}  // namespace

Status SimHost::Reach(std::int32_t command, std::int16_t address) const {
  if (command < 0 || command > kLargestCommand) return kInvalidArgument;
  if (gauge_ == nullptr || address != sim::Gauge::kAddress) return kNoAcknowledge;
  return 0;
}

Status SimHost::ReadSMBusBlock_(std::int32_t command, std::span<std::uint8_t> data,
                                std::int16_t& length, std::int16_t address) {
  length = 0;
  if (const Status status = Reach(command, address); status != 0) return status;
  const auto answer = gauge_->ReadBlock(Command(command));
  if (!answer) return kNoAcknowledge;
  if (answer->size() > data.size()) return kAnswerTooLong;
  std::ranges::copy(*answer, data.begin());
  length = static_cast<std::int16_t>(answer->size());
  return 0;
}

Status SimHost::ReadSMBusBlock(std::int32_t command, std::string& text, std::int16_t address) {
  text.clear();
  if (const Status status = Reach(command, address); status != 0) return status;
  const auto answer = gauge_->ReadBlock(Command(command));
  if (!answer) return kNoAcknowledge;
  text.assign(answer->begin(), answer->end());
  return 0;
}

Status SimHost::WriteSMBusBlock(std::int32_t command, std::span<const std::uint8_t> data,
                                std::int16_t length, std::int16_t address) {
  if (length < 0 || length > kLargestBlock || static_cast<std::size_t>(length) > data.size()) {
    return kInvalidArgument;
  }
  if (const Status status = Reach(command, address); status != 0) return status;
  return gauge_->WriteBlock(Command(command), data.first(static_cast<std::size_t>(length)))
             ? 0
             : kNoAcknowledge;
}

Status SimHost::ReadWord(std::int32_t command, std::int16_t address, std::uint16_t& word) {
  if (const Status status = Reach(command, address); status != 0) return status;
  const auto answer = gauge_->ReadWord(Command(command));
  if (!answer) return kNoAcknowledge;
  word = *answer;
  return 0;
}

Status SimHost::WriteWord(std::int32_t command, std::int16_t address, std::uint16_t word) {
  if (const Status status = Reach(command, address); status != 0) return status;
  return gauge_->WriteWord(Command(command), word) ? 0 : kNoAcknowledge;
}

// A failed read leaves the caller's variables as they were.
Status SimHost::ReadSMBusWord(std::int32_t command, std::uint8_t& high, std::uint8_t& low,
                              std::int16_t address) {
  std::uint16_t word = 0;
  const Status status = ReadWord(command, address, word);
  if (status == 0) {
    high = static_cast<std::uint8_t>(word >> 8);
    low = static_cast<std::uint8_t>(word & 0xFF);
  }
  return status;
}

Status SimHost::ReadSMBusWord_(std::int32_t command, std::int16_t& word, std::int16_t address) {
  std::uint16_t pattern = 0;
  const Status status = ReadWord(command, address, pattern);
  if (status == 0) word = static_cast<std::int16_t>(pattern);
  return status;
}

Status SimHost::WriteSMBusWord(std::int32_t command, std::uint8_t high, std::uint8_t low,
                               std::int16_t address) {
  return WriteWord(command, address, static_cast<std::uint16_t>(high << 8 | low));
}

Status SimHost::WriteSMBusWord_(std::int32_t command, std::int16_t word, std::int16_t address) {
  return WriteWord(command, address, static_cast<std::uint16_t>(word));
}

std::int32_t SimHost::CheckForError() {
  return gauge_ ? gauge_->TakePendingError() : 0;
}

void SimHost::Delay(std::int16_t count) {
  clock_.Wait(count);
}

}  // namespace ombrelay
