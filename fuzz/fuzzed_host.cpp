#include "fuzz/fuzzed_host.h"

#include <array>

#include "fuzz/reply_stream.h"

namespace ombrelay::fuzz {
namespace {

constexpr Status kFailed = 1;
// The longest block a length byte can give.
constexpr std::size_t kLongestBlock = 255;

}  // namespace

bool FuzzedHost::Take(std::uint8_t& byte) {
  if (next_ >= replies_.size()) return false;
  byte = replies_[next_++];
  return true;
}

Status FuzzedHost::Transfer() {
  limits_.CountBusOperation();
  std::uint8_t status = 0;
  if (!Take(status)) return kFailed;
  return status >= kFailingStatus ? kFailed : 0;
}

bool FuzzedHost::TakeBlock(std::span<std::uint8_t> room, std::size_t& length) {
  std::uint8_t count = 0;
  if (!Take(count)) return false;
  length = 0;
  for (std::uint8_t byte = 0; length < count && Take(byte); ++length) {
    if (length < room.size()) room[length] = byte;
  }
  // A block cut short by the end of the bytes failed like every transfer after it.
  return length == count && length <= room.size();
}

Status FuzzedHost::ReadSMBusBlock_(std::int32_t /*command*/, std::span<std::uint8_t> data,
                                   std::int16_t& length, std::int16_t /*address*/) {
  length = 0;
  if (Transfer() != 0) return kFailed;
  std::size_t taken = 0;
  if (!TakeBlock(data, taken)) return kFailed;
  length = static_cast<std::int16_t>(taken);
  return 0;
}

Status FuzzedHost::ReadSMBusBlock(std::int32_t /*command*/, std::string& text,
                                  std::int16_t /*address*/) {
  text.clear();
  if (Transfer() != 0) return kFailed;
  std::array<std::uint8_t, kLongestBlock> block{};
  std::size_t taken = 0;
  if (!TakeBlock(block, taken)) return kFailed;
  text.assign(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(taken));
  return 0;
}

Status FuzzedHost::WriteSMBusBlock(std::int32_t /*command*/, std::span<const std::uint8_t> data,
                                   std::int16_t length, std::int16_t /*address*/) {
  // The host interface's own rule, before anything goes out.
  if (length < 0 || static_cast<std::size_t>(length) > data.size()) return kFailed;
  return Transfer();
}

Status FuzzedHost::ReadSMBusWord(std::int32_t /*command*/, std::uint8_t& high, std::uint8_t& low,
                                 std::int16_t /*address*/) {
  if (Transfer() != 0) return kFailed;
  if (!Take(high) || !Take(low)) return kFailed;
  return 0;
}

Status FuzzedHost::ReadSMBusWord_(std::int32_t command, std::int16_t& word, std::int16_t address) {
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  const Status status = ReadSMBusWord(command, high, low, address);
  if (status == 0) word = static_cast<std::int16_t>((high << 8) | low);
  return status;
}

Status FuzzedHost::WriteSMBusWord(std::int32_t /*command*/, std::uint8_t /*high*/,
                                  std::uint8_t /*low*/, std::int16_t /*address*/) {
  return Transfer();
}

Status FuzzedHost::WriteSMBusWord_(std::int32_t /*command*/, std::int16_t /*word*/,
                                   std::int16_t /*address*/) {
  return Transfer();
}

std::int32_t FuzzedHost::CheckForError() {
  limits_.CountBusOperation();
  std::uint8_t pending = 0;
  if (pendingInARow_ >= kMostPendingErrorsInARow || !Take(pending) || pending == 0) {
    pendingInARow_ = 0;
    return 0;
  }
  ++pendingInARow_;
  return pending;
}

void FuzzedHost::Delay(std::int16_t count) {
  clock_.Advance(count);
  limits_.CheckTime();
}

}  // namespace ombrelay::fuzz
