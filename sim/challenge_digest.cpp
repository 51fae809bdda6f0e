#include "sim/challenge_digest.h"

#include <openssl/evp.h>

#include <algorithm>
#include <stdexcept>

namespace ombrelay::sim {
namespace {

// SHA-1 of the key followed by 20 bytes: 36 bytes exactly, the key never padded.
Digest KeyedSha1(const SecurityKey& key, const std::array<std::uint8_t, 20>& message) {
  std::array<std::uint8_t, 36> input{};
  std::copy(key.begin(), key.end(), input.begin());
  std::copy(message.begin(), message.end(), input.begin() + key.size());
  Digest digest{};
  unsigned int length = 0;
  if (EVP_Digest(input.data(), input.size(), digest.data(), &length, EVP_sha1(), nullptr) != 1 ||
      length != digest.size()) {
    throw std::runtime_error("SHA-1 failed");
  }
  return digest;
}

}  // namespace

Digest ChallengeDigest(const SecurityKey& key, const Challenge& challenge) {
  return KeyedSha1(key, KeyedSha1(key, challenge));
}

}  // namespace ombrelay::sim
