#include "fuzz/reply_recorder.h"

#include <algorithm>

#include "fuzz/reply_stream.h"

namespace ombrelay::fuzz {

Status ReplyRecorder::RecordStatus(Status status) {
  replies_.push_back(status == 0 ? kSucceededStatus : kFailingStatus);
  return status;
}

void ReplyRecorder::RecordBlock(std::span<const std::uint8_t> bytes) {
  // A length byte cannot say more; the simulator's blocks are far shorter.
  const std::size_t length = std::min<std::size_t>(bytes.size(), 255);
  replies_.push_back(static_cast<std::uint8_t>(length));
  replies_.insert(replies_.end(), bytes.begin(),
                  bytes.begin() + static_cast<std::ptrdiff_t>(length));
}

Status ReplyRecorder::ReadSMBusBlock_(std::int32_t command, std::span<std::uint8_t> data,
                                      std::int16_t& length, std::int16_t address) {
  const Status status = RecordStatus(inner_.ReadSMBusBlock_(command, data, length, address));
  if (status == 0) RecordBlock(data.first(static_cast<std::size_t>(length)));
  return status;
}

Status ReplyRecorder::ReadSMBusBlock(std::int32_t command, std::string& text,
                                     std::int16_t address) {
  const Status status = RecordStatus(inner_.ReadSMBusBlock(command, text, address));
  if (status == 0) {
    RecordBlock({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  }
  return status;
}

Status ReplyRecorder::WriteSMBusBlock(std::int32_t command, std::span<const std::uint8_t> data,
                                      std::int16_t length, std::int16_t address) {
  return RecordStatus(inner_.WriteSMBusBlock(command, data, length, address));
}

Status ReplyRecorder::ReadSMBusWord(std::int32_t command, std::uint8_t& high, std::uint8_t& low,
                                    std::int16_t address) {
  const Status status = RecordStatus(inner_.ReadSMBusWord(command, high, low, address));
  if (status == 0) replies_.insert(replies_.end(), {high, low});
  return status;
}

Status ReplyRecorder::ReadSMBusWord_(std::int32_t command, std::int16_t& word,
                                     std::int16_t address) {
  const Status status = RecordStatus(inner_.ReadSMBusWord_(command, word, address));
  const auto bits = static_cast<std::uint16_t>(word);
  if (status == 0) {
    replies_.insert(replies_.end(),
                    {static_cast<std::uint8_t>(bits >> 8), static_cast<std::uint8_t>(bits & 0xFF)});
  }
  return status;
}

Status ReplyRecorder::WriteSMBusWord(std::int32_t command, std::uint8_t high, std::uint8_t low,
                                     std::int16_t address) {
  return RecordStatus(inner_.WriteSMBusWord(command, high, low, address));
}

Status ReplyRecorder::WriteSMBusWord_(std::int32_t command, std::int16_t word,
                                      std::int16_t address) {
  return RecordStatus(inner_.WriteSMBusWord_(command, word, address));
}

std::int32_t ReplyRecorder::CheckForError() {
  const std::int32_t pending = inner_.CheckForError();
  replies_.push_back(static_cast<std::uint8_t>(std::clamp(pending, 0, 255)));
  return pending;
}

}  // namespace ombrelay::fuzz
