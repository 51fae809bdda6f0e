#pragma once
// SMBus packet error checking: CRC-8 with polynomial x^8 + x^2 + x + 1 over every byte of a
// transfer as it goes over the wire, address bytes included.

#include <cstdint>
#include <span>

namespace ombrelay {

// Goes on from crc, the code of the bytes before.
std::uint8_t SmbusPec(std::span<const std::uint8_t> bytes, std::uint8_t crc = 0);

}  // namespace ombrelay
