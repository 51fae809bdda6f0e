#include "sim/challenge_digest.h"

#include <gtest/gtest.h>
#include <openssl/sha.h>

#include <algorithm>
#include <span>

namespace ombrelay::sim {
namespace {

Digest Sha1(std::span<const std::uint8_t> input) {
  Digest digest{};
  SHA1(input.data(), input.size(), digest.data());
  return digest;
}

// The key followed by 20 bytes, built by hand: 36 bytes, nothing added.
std::array<std::uint8_t, 36> Concatenated(const SecurityKey& key, const Digest& rest) {
  std::array<std::uint8_t, 36> input{};
  std::copy(key.begin(), key.end(), input.begin());
  std::copy(rest.begin(), rest.end(), input.begin() + 16);
  return input;
}

TEST(ChallengeDigest, IsSha1OfTheKeyAndSha1OfTheKeyAndChallenge) {
  const std::uint8_t abc[] = {'a', 'b', 'c'};
  EXPECT_EQ(Sha1(abc), (Digest{0xA9, 0x99, 0x3E, 0x36, 0x47, 0x06, 0x81, 0x6A, 0xBA, 0x3E,
                               0x25, 0x71, 0x78, 0x50, 0xC2, 0x6C, 0x9C, 0xD0, 0xD8, 0x9D}))
      << "the reference below is plain SHA-1";

  // Leading zero bytes in both, so that a digest that drops or pads them differs.
  const SecurityKey key = {0x00, 0x00, 0x3C, 0x91, 0x07, 0xE2, 0x5A, 0x00,
                           0x18, 0xBF, 0x44, 0x6D, 0x00, 0xC3, 0x29, 0xF0};
  const Challenge challenge = {0x00, 0x00, 0x00, 0x7B, 0xD4, 0x12, 0x00, 0x9E, 0x65, 0x31,
                               0xA8, 0x0F, 0x00, 0x57, 0xEC, 0x23, 0x40, 0x8B, 0x16, 0x01};
  const Digest first = Sha1(Concatenated(key, challenge));
  EXPECT_EQ(ChallengeDigest(key, challenge), Sha1(Concatenated(key, first)));
}

}  // namespace
}  // namespace ombrelay::sim
