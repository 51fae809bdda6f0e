#include "hosts/key_masking.h"

#include <algorithm>

namespace ombrelay {
namespace {

constexpr std::int32_t kAuthenticationCommand = 0x2F;
// The ManufacturerAccess words that change the Unseal, Full Access and Authentication keys.
constexpr std::uint16_t kFirstKeyChangeWord = 0x0035;
constexpr std::uint16_t kLastKeyChangeWord = 0x0037;

bool IsWrite(const BusOperation& operation) {
  return operation.op.starts_with("Write");
}

}  // namespace

void KeyMasking::Apply(BusOperation& operation) {
  if (!IsWrite(operation)) return;
  if (operation.word) {
    // Only the key block ends the wait: should the change stop short, one block too many is
    // masked, never a key too few.
    if (*operation.word >= kFirstKeyChangeWord && *operation.word <= kLastKeyChangeWord)
      keyExpected_ = true;
    return;
  }
  if (keyExpected_ && operation.cmd == kAuthenticationCommand) {
    std::ranges::fill(operation.data, 0);
    operation.masked = true;
    keyExpected_ = false;
  }
}

}  // namespace ombrelay
