#pragma once
// The digest that answers a security challenge: SHA-1 over the key followed by the challenge,
// then SHA-1 over the key followed by that first digest. Keys, challenges and digests here are
// in display order, the first byte the most significant; the bus carries them reversed.

#include <array>
#include <cstdint>

namespace ombrelay::sim {

using SecurityKey = std::array<std::uint8_t, 16>;
using Challenge = std::array<std::uint8_t, 20>;
using Digest = std::array<std::uint8_t, 20>;

Digest ChallengeDigest(const SecurityKey& key, const Challenge& challenge);

}  // namespace ombrelay::sim
