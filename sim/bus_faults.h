#pragma once
// Faults injected between the adapter and the gauge: transfers that fail, block answers of the
// wrong length, answers with a byte spoilt on the way, a gauge gone from the bus.

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>

#include "sim/command_set.h"

namespace ombrelay::sim {

enum class Transfer { WordRead, WordWrite, BlockRead, BlockWrite };

class BusFaults {
 public:
  // The next count transfers of this kind fail and never reach the gauge; replaces any count
  // still left. A count below 1 clears it.
  void FailNext(Transfer kind, int count);
  // The next count block reads that the gauge answers come with exactly length bytes:
  // truncated, or padded with zeros.
  void AnswerNextBlockReadsWithLength(int count, std::uint8_t length);
  // The next answered read of this kind (WordRead or BlockRead) arrives with byte inverted; a
  // word's byte 0 is its low byte. Each call spoils one more read, in order. A byte beyond the
  // answer spoils nothing but is used up all the same.
  void CorruptNextRead(Transfer kind, std::size_t byte);
  // A disconnected gauge fails every transfer.
  void SetDisconnected(bool disconnected) { disconnected_ = disconnected; }
  bool Disconnected() const { return disconnected_; }

  // Asked once per transfer: true when this one fails. Uses up one injected failure.
  bool TakeFailure(Transfer kind);
  // Applied to each answered block read: uses up one wrong length.
  void Reshape(Bytes& answer);
  // Applied to each answered read of kind, after any reshape: uses up one spoilt byte.
  void Corrupt(Transfer kind, Bytes& answer);

 private:
  std::array<int, 4> failuresLeft_{};
  std::array<std::deque<std::size_t>, 4> corruptions_;
  int reshapesLeft_ = 0;
  std::uint8_t reshapeLength_ = 0;
  bool disconnected_ = false;
};

}  // namespace ombrelay::sim
