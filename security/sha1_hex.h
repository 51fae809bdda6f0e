#pragma once
// Plain SHA-1 of a run of bytes, as 40 hex digits in SHA-1's own order. The digits come in lower
// case; every caller upper-cases what it shows.

#include <cstdint>
#include <span>
#include <string>

namespace ombrelay {

std::string SHA1_BytesHexHash(std::span<const std::uint8_t> data);

}  // namespace ombrelay
