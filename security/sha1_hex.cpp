#include "security/sha1_hex.h"

#include <openssl/evp.h>

#include <array>
#include <memory>
#include <stdexcept>

namespace ombrelay {

std::string SHA1_BytesHexHash(std::span<const std::uint8_t> data) {
  const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                        &EVP_MD_CTX_free);
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned int length = 0;
  if (!context || EVP_DigestInit_ex(context.get(), EVP_sha1(), nullptr) != 1 ||
      EVP_DigestUpdate(context.get(), data.data(), data.size()) != 1 ||
      EVP_DigestFinal_ex(context.get(), digest.data(), &length) != 1) {
    // Only an exhausted or broken libcrypto gets here; no digest is better than a wrong one.
    throw std::runtime_error("SHA-1 is not available from libcrypto");
  }
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (unsigned int i = 0; i < length; ++i) {
    text += kDigits[digest[i] >> 4];
    text += kDigits[digest[i] & 0x0F];
  }
  return text;
}

}  // namespace ombrelay
