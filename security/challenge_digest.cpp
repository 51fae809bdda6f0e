// The keyed digest of a challenge: SHA-1 of key and challenge, then SHA-1 of key and that
// digest, each over exactly 36 bytes.

#include <array>

#include "security/auth_morlin.h"
#include "security/sha1_calc.h"
#include "security/sha1_hex.h"
#include "shell/numeric.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kPassBytes = 36;
constexpr std::size_t kDigestBytes = 20;

// The calculator form that lends the digest its str2byte: made hidden on first use and kept.
const SHA1Calc& HiddenCalculator() {
  static const SHA1Calc form = [] {
    SHA1Calc hidden;
    hidden.Visible = false;
    return hidden;
  }();
  return form;
}

// SHA-1 over the 36 bytes that key followed by text gives, as the library gives it.
std::string Pass(const std::string& key, const std::string& text,
                 std::array<std::uint8_t, kPassBytes>& buffer) {
  HiddenCalculator().str2byte(key + text, buffer, kPassBytes);
  return SHA1_BytesHexHash(buffer);
}

}  // namespace

void AuthMorlin::AUTHENTICATE(const std::string& txtMsg, const std::string& key,
                              std::string& firstPassResult, std::string& sha1Result,
                              std::string& sha1ResultBigEndian,
                              std::span<std::uint8_t> digestLittleEndian) const {
  std::array<std::uint8_t, kPassBytes> buffer{};
  const std::string firstPass = Pass(key, txtMsg, buffer);
  firstPassResult = ToUpper(firstPass);
  const std::string secondPass = Pass(key, firstPass, buffer);

  sha1Result.clear();
  for (std::size_t i = 0; i < kDigestBytes; ++i) {
    const std::string pair = ToUpper(secondPass.substr(38 - 2 * i, 2));
    sha1Result += pair;
    sha1ResultBigEndian.insert(0, pair);
  }
  HiddenCalculator().str2byte(sha1Result, digestLittleEndian, kDigestBytes);
}

KeyedDigest AuthMorlin::DigestOf(const std::string& challenge, const std::string& key) const {
  KeyedDigest digest;
  AUTHENTICATE(challenge, key, digest.firstPassResult, digest.sha1Result,
               digest.sha1ResultBigEndian, digest.digestLittleEndian);
  return digest;
}

}  // namespace ombrelay
