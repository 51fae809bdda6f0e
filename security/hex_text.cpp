#include "security/hex_text.h"

#include <algorithm>
#include <string>

#include "gauge/value_conversion.h"
#include "shell/utils.h"

namespace ombrelay {

std::vector<std::string> TextCharacters(const std::string& text) {
  std::vector<std::string> characters;
  for (const char byte : text) {
    const bool continuation = (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
    if (continuation && !characters.empty()) {
      characters.back() += byte;
    } else {
      characters.emplace_back(1, byte);
    }
  }
  return characters;
}

std::uint8_t HexPairValue(std::string_view pair) {
  std::uint8_t value = 0;
  for (const char c : pair.substr(0, 2)) {
    const std::string digit(1, c);
    if (!IsHexDigit(digit)) break;
    value = static_cast<std::uint8_t>(value * 16 + std::stoi(digit, nullptr, 16));
  }
  return value;
}

std::string HexText(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes)
    text += ByteHexString(byte);
  return text;
}

std::string TurnedHexText(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
    text += ByteHexString(*byte);
  return text;
}

void FillTurned(std::string_view text, std::span<std::uint8_t> block) {
  const std::size_t pairs = block.size();
  for (std::size_t i = 0; i < pairs; ++i) {
    const std::size_t at = 2 * (pairs - 1 - i);
    block[i] = at < text.size() ? HexPairValue(text.substr(at, 2)) : 0;
  }
}

}  // namespace ombrelay
