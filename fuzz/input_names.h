#pragma once
// Names the fuzzers take from their input, so that lookups also hit what the input defines.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ombrelay::fuzz {

struct IniNames {
  std::vector<std::string> sections;
  std::vector<std::string> keys;
};

// The first few section names (between '[' and ']' or the line's end) and keys (in front of
// the first '=') of an initialisation file's lines, untrimmed, as they stand.
IniNames NamesInIni(std::string_view text, std::size_t most);

}  // namespace ombrelay::fuzz
