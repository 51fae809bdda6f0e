#include "sim/dataflash.h"

namespace ombrelay::sim {

Dataflash::Dataflash(const SecurityMode& security) : security_(security), bytes_(kSize, kErased) {}

bool Dataflash::Reaches(std::size_t address, std::size_t count) const {
  return security_ != SecurityMode::Sealed && address <= kSize && count <= kSize - address;
}

std::optional<Bytes> Dataflash::Read(std::size_t address, std::size_t count) const {
  if (!Reaches(address, count)) return std::nullopt;
  return Peek(address, count);
}

bool Dataflash::Write(std::size_t address, std::span<const std::uint8_t> data) {
  if (!Reaches(address, data.size())) return false;
  Bytes stored(data.begin(), data.end());
  if (!wrongBytes_.empty()) {
    const std::size_t byte = wrongBytes_.front();
    wrongBytes_.pop_front();
    if (byte < stored.size()) stored[byte] = static_cast<std::uint8_t>(~stored[byte]);
  }
  Poke(address, stored);
  return true;
}

Bytes Dataflash::Peek(std::size_t address, std::size_t count) const {
  Bytes bytes(count, kErased);
  for (std::size_t i = 0; i < count && address + i < kSize; ++i)
    bytes[i] = bytes_[address + i];
  return bytes;
}

void Dataflash::Poke(std::size_t address, std::span<const std::uint8_t> data) {
  for (std::size_t i = 0; i < data.size() && address + i < kSize; ++i)
    bytes_[address + i] = data[i];
}

}  // namespace ombrelay::sim
