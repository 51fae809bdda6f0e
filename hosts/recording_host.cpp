#include "hosts/recording_host.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kWordLength = 2;

// The first length bytes of data, as far as data reaches: what a block transfer carried.
template <typename Byte>
std::vector<std::uint8_t> FirstBytes(std::span<Byte> data, std::int32_t length) {
  const auto count = std::min(static_cast<std::size_t>(std::max(length, 0)), data.size());
  return {data.begin(), data.begin() + static_cast<std::ptrdiff_t>(count)};
}

}  // namespace

RecordingHost::RecordingHost(Host& inner, std::function<std::int64_t()> nowMs)
    : inner_(&inner), nowMs_(std::move(nowMs)) {}

BusOperation RecordingHost::Start(const char* op, std::int32_t command,
                                  std::int16_t address) const {
  BusOperation operation;
  operation.tMs = nowMs_();
  operation.op = op;
  operation.cmd = command;
  operation.address = address;
  return operation;
}

BusOperation RecordingHost::StartWord(const char* op, std::int32_t command,
                                      std::int16_t address) const {
  BusOperation operation = Start(op, command, address);
  operation.len = kWordLength;
  return operation;
}

void RecordingHost::SetWord(BusOperation& operation, std::uint8_t high, std::uint8_t low) {
  operation.data = {low, high};
  operation.word = static_cast<std::uint16_t>(high << 8 | low);
}

Status RecordingHost::Record(BusOperation operation) {
  if (masking_) masking_->Apply(operation);
  if (log_.is_open()) log_ << ToJson(operation).dump() << '\n' << std::flush;
  operations_.push_back(operation);
  // The handler gets its own copy: it may clear the record.
  if (onOperation) onOperation(operation);
  return operation.status;
}

bool RecordingHost::OpenLog(const std::string& path) {
  log_.close();
  log_.clear();
  log_.open(path, std::ios::out | std::ios::trunc);
  return log_.is_open();
}

Status RecordingHost::ReadSMBusBlock_(std::int32_t command, std::span<std::uint8_t> data,
                                      std::int16_t& length, std::int16_t address) {
  BusOperation operation = Start("ReadSMBusBlock_", command, address);
  operation.status = inner_->ReadSMBusBlock_(command, data, length, address);
  operation.data = FirstBytes(data, length);
  operation.len = length;
  return Record(std::move(operation));
}

Status RecordingHost::ReadSMBusBlock(std::int32_t command, std::string& text,
                                     std::int16_t address) {
  BusOperation operation = Start("ReadSMBusBlock", command, address);
  operation.status = inner_->ReadSMBusBlock(command, text, address);
  operation.data.assign(text.begin(), text.end());
  operation.len = static_cast<std::int32_t>(text.size());
  return Record(std::move(operation));
}

Status RecordingHost::WriteSMBusBlock(std::int32_t command, std::span<const std::uint8_t> data,
                                      std::int16_t length, std::int16_t address) {
  BusOperation operation = Start("WriteSMBusBlock", command, address);
  operation.data = FirstBytes(data, length);
  operation.len = length;
  operation.status = inner_->WriteSMBusBlock(command, data, length, address);
  return Record(std::move(operation));
}

Status RecordingHost::ReadSMBusWord(std::int32_t command, std::uint8_t& high, std::uint8_t& low,
                                    std::int16_t address) {
  BusOperation operation = StartWord("ReadSMBusWord", command, address);
  operation.status = inner_->ReadSMBusWord(command, high, low, address);
  SetWord(operation, high, low);
  return Record(std::move(operation));
}

Status RecordingHost::ReadSMBusWord_(std::int32_t command, std::int16_t& word,
                                     std::int16_t address) {
  BusOperation operation = StartWord("ReadSMBusWord_", command, address);
  operation.status = inner_->ReadSMBusWord_(command, word, address);
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  SplitWordtoBytes(word, high, low);
  SetWord(operation, high, low);
  return Record(std::move(operation));
}

Status RecordingHost::WriteSMBusWord(std::int32_t command, std::uint8_t high, std::uint8_t low,
                                     std::int16_t address) {
  BusOperation operation = StartWord("WriteSMBusWord", command, address);
  SetWord(operation, high, low);
  operation.status = inner_->WriteSMBusWord(command, high, low, address);
  return Record(std::move(operation));
}

Status RecordingHost::WriteSMBusWord_(std::int32_t command, std::int16_t word,
                                      std::int16_t address) {
  BusOperation operation = StartWord("WriteSMBusWord_", command, address);
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  SplitWordtoBytes(word, high, low);
  SetWord(operation, high, low);
  operation.status = inner_->WriteSMBusWord_(command, word, address);
  return Record(std::move(operation));
}

std::int32_t RecordingHost::CheckForError() {
  BusOperation operation = Start("CheckForError", BusOperation::kNoCommand);
  operation.status = inner_->CheckForError();
  return Record(std::move(operation));
}

void RecordingHost::Delay(std::int16_t count) {
  BusOperation operation = Start("Delay", BusOperation::kNoCommand);
  operation.len = count;
  inner_->Delay(count);
  Record(std::move(operation));
}

}  // namespace ombrelay
