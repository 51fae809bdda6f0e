#include "hosts/smbus_pec.h"

namespace ombrelay {

std::uint8_t SmbusPec(std::span<const std::uint8_t> bytes, std::uint8_t crc) {
  constexpr std::uint8_t kPolynomial = 0x07;
  for (const std::uint8_t byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit)
      crc = static_cast<std::uint8_t>(crc & 0x80 ? crc << 1 ^ kPolynomial : crc << 1);
  }
  return crc;
}

}  // namespace ombrelay
