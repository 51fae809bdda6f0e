#pragma once
// Bus errors the gauge has left behind, handed out one at a time to whoever asks the adapter
// for its error state.

#include <cstdint>
#include <deque>

namespace ombrelay::sim {

class PendingErrors {
 public:
  // The code a stray or half-taken transfer leaves; any non-zero code means an error.
  static constexpr std::int32_t kBusError = 1;

  // Code 0 means no error and is not queued.
  void Queue(int count, std::int32_t code = kBusError) {
    if (code == 0) return;
    for (int i = 0; i < count; ++i)
      errors_.push_back(code);
  }
  // The oldest pending error, taken away; 0 when none is left.
  std::int32_t Take() {
    if (errors_.empty()) return 0;
    const std::int32_t code = errors_.front();
    errors_.pop_front();
    return code;
  }

 private:
  std::deque<std::int32_t> errors_;
};

}  // namespace ombrelay::sim
