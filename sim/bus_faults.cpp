#include "sim/bus_faults.h"

#include <algorithm>
#include <cstddef>

namespace ombrelay::sim {
namespace {

std::size_t IndexOf(Transfer kind) {
  return static_cast<std::size_t>(kind);
}

}  // namespace

void BusFaults::FailNext(Transfer kind, int count) {
  failuresLeft_.at(IndexOf(kind)) = std::max(count, 0);
}

void BusFaults::AnswerNextBlockReadsWithLength(int count, std::uint8_t length) {
  reshapesLeft_ = std::max(count, 0);
  reshapeLength_ = length;
}

void BusFaults::CorruptNextRead(Transfer kind, std::size_t byte) {
  corruptions_.at(IndexOf(kind)).push_back(byte);
}

bool BusFaults::TakeFailure(Transfer kind) {
  if (disconnected_) return true;
  int& left = failuresLeft_.at(IndexOf(kind));
  if (left == 0) return false;
  --left;
  return true;
}

void BusFaults::Reshape(Bytes& answer) {
  if (reshapesLeft_ == 0) return;
  --reshapesLeft_;
  answer.resize(reshapeLength_, 0);
}

void BusFaults::Corrupt(Transfer kind, Bytes& answer) {
  auto& pending = corruptions_.at(IndexOf(kind));
  if (pending.empty()) return;
  const std::size_t byte = pending.front();
  pending.pop_front();
  if (byte < answer.size()) answer[byte] = static_cast<std::uint8_t>(~answer[byte]);
}

}  // namespace ombrelay::sim
