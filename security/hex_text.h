#pragma once
// Bytes and the hex text the security panel shows them as. On the bus every block runs least
// significant byte first; in the boxes, most significant first.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ombrelay {

// The characters of a box's UTF-8 text, each as its own string: positions and lengths in a
// box count characters, not bytes.
std::vector<std::string> TextCharacters(const std::string& text);

// The value of the hex digits at the start of pair, up to the first character that is not
// one; 0 when the pair is empty or starts with such a character.
std::uint8_t HexPairValue(std::string_view pair);

// Two upper-case digits a byte, first byte first.
std::string HexText(std::span<const std::uint8_t> bytes);
// The same, last byte first.
std::string TurnedHexText(std::span<const std::uint8_t> bytes);

// block[i] from the pair of text that stands i pairs from the end of block.size() pairs: the
// last pair goes first. Pairs past the end of the text give 0.
void FillTurned(std::string_view text, std::span<std::uint8_t> block);

}  // namespace ombrelay
