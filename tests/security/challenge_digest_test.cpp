#include <gtest/gtest.h>
#include <openssl/sha.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "security/auth_morlin.h"
#include "security/sha1_calc.h"
#include "security/sha1_hex.h"
#include "tests/support/security_bench.h"

namespace ombrelay {
namespace {

using testing::ExpectedDigest;
using testing::HexOf;
using testing::KeyBytes;
using testing::TurnedHexOf;

std::vector<std::uint8_t> Bytes(const std::string& text) {
  return {text.begin(), text.end()};
}

std::array<std::uint8_t, 20> ChallengeBytes(const std::string& text) {
  std::array<std::uint8_t, 20> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<std::uint8_t>(std::stoi(text.substr(2 * i, 2), nullptr, 16));
  return bytes;
}

std::vector<std::uint8_t> FirstPass(const std::string& key, const std::string& challenge) {
  std::vector<std::uint8_t> bytes;
  for (const auto byte : KeyBytes(key))
    bytes.push_back(byte);
  for (const auto byte : ChallengeBytes(challenge))
    bytes.push_back(byte);
  std::vector<std::uint8_t> digest(20);
  SHA1(bytes.data(), bytes.size(), digest.data());
  return digest;
}

struct Authenticated {
  std::string firstPass;
  std::string sha1Result;
  std::string bigEndian;
  std::array<std::uint8_t, 24> littleEndian;
};

Authenticated Authenticate(const std::string& challenge, const std::string& key,
                           std::string bigEndian = {}) {
  testing::SimBench bench(std::nullopt);
  AuthMorlin panel(bench.host, bench.platform);
  Authenticated out{{}, {}, std::move(bigEndian), {}};
  out.littleEndian.fill(0xEE);
  panel.AUTHENTICATE(challenge, key, out.firstPass, out.sha1Result, out.bigEndian,
                     out.littleEndian);
  return out;
}

TEST(ChallengeDigest, TheLibraryIsPlainSha1) {
  EXPECT_EQ(SHA1_BytesHexHash(Bytes("abc")), "a9993e364706816aba3e25717850c26c9cd0d89d");
  EXPECT_EQ(SHA1_BytesHexHash({}), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
}

// Keys and challenges with leading zero bytes and lower-case digits, against the two passes
// composed here from plain SHA-1; each of the three forms of the result is pinned.
TEST(ChallengeDigest, TwoPassesOfKeyedSha1InThreeForms) {
  const std::array<std::pair<const char*, const char*>, 3> cases = {{
      {"7E1F00C2D94B36A8A8634BD9C2001FE7", "000102030405060708090A0B0C0D0E0F10111213"},
      {"00a1b2c3d4e5f60718293a4b5c6d7e8f", "00ff00ee00dd00cc00bb00aa0099008800770066"},
      {"0000000000000000000000000000000F", "F0E1D2C3B4A5968778695A4B3C2D1E0F00000000"},
  }};
  for (const auto& [key, challenge] : cases) {
    SCOPED_TRACE(key);
    const Authenticated out = Authenticate(challenge, key);
    const auto p2 = ExpectedDigest(key, ChallengeBytes(challenge));
    const std::vector<std::uint8_t> digest(p2.begin(), p2.end());
    EXPECT_EQ(out.firstPass, HexOf(FirstPass(key, challenge)));
    EXPECT_EQ(out.bigEndian, HexOf(digest)) << "shown most significant first";
    EXPECT_EQ(out.sha1Result, TurnedHexOf(digest)) << "compared as the bus reads it";
    for (std::size_t i = 0; i < 20; ++i)
      EXPECT_EQ(out.littleEndian[i], p2[19 - i]) << "bus byte " << i;
    EXPECT_EQ(out.littleEndian[20], 0xEE) << "the rest is left alone";
  }
  // Taken in display order: the byte-reversed challenge is another challenge.
  EXPECT_NE(
      Authenticate("000102030405060708090A0B0C0D0E0F10111213", AuthMorlin::kDefaultKey).bigEndian,
      Authenticate("131211100F0E0D0C0B0A09080706050403020100", AuthMorlin::kDefaultKey).bigEndian);
}

TEST(ChallengeDigest, LeadingZeroBytesKeepTheirDigitsAndOldTextStaysBehind) {
  // Find a challenge whose digest starts with a zero byte.
  std::string challenge;
  for (int n = 0; challenge.empty(); ++n) {
    char text[41];
    std::snprintf(text, sizeof text, "%040X", n);
    if (ExpectedDigest(AuthMorlin::kDefaultKey, ChallengeBytes(text))[0] == 0) challenge = text;
  }
  const Authenticated out = Authenticate(challenge, AuthMorlin::kDefaultKey, "OLD");
  EXPECT_EQ(out.bigEndian.substr(0, 2), "00");
  EXPECT_EQ(out.bigEndian.size(), 43U);
  EXPECT_EQ(out.bigEndian.substr(40), "OLD");
  EXPECT_EQ(out.sha1Result.size(), 40U);
  EXPECT_EQ(out.sha1Result.substr(38), "00");
  EXPECT_EQ(out.littleEndian[19], 0);
}

TEST(Str2byte, TakesPairsInTextOrderUpToTheFirstNonHexCharacter) {
  const SHA1Calc form;
  struct Case {
    const char* text;
    std::int16_t count;
    std::vector<std::uint8_t> bytes;
  };
  const std::vector<Case> cases = {
      {"0A1b2C", 3, {0x0A, 0x1B, 0x2C, 0xEE}},
      {"123", 2, {0x12, 0x03, 0xEE}},
      {"G1", 1, {0x00, 0xEE}},
      {"1G", 1, {0x01, 0xEE}},
      {" 1", 1, {0x00, 0xEE}},
      {"", 2, {0x00, 0x00, 0xEE}},
      {"ABCDEF", 1, {0xAB, 0xEE}},
  };
  for (const Case& c : cases) {
    std::vector<std::uint8_t> out(c.bytes.size(), 0xEE);
    form.str2byte(c.text, out, c.count);
    EXPECT_EQ(out, c.bytes) << '"' << c.text << '"';
  }
}

TEST(SHA1Calc, ItsButtonsHashFixedByteCountsInUpperCase) {
  SHA1Calc form;
  form.cmdSHA1Msg_Click();
  EXPECT_EQ(form.txtDigest.Text, "6768033E216468247BD031A0A2D9876D79818F8F")
      << "an empty message is 20 zero bytes";

  // A key two digits short: key and message run together, then zeros up to 36 bytes.
  form.txtKey.Text = "7E1F00C2D94B36A8A8634BD9C2001F";
  form.txtMsg.Text = "000102030405060708090A0B0C0D0E0F10111213";
  form.cmdSHA1KeyMsg_Click();
  std::vector<std::uint8_t> joined;
  const std::string all = form.txtKey.Text + form.txtMsg.Text;
  for (std::size_t i = 0; i < 35; ++i)
    joined.push_back(static_cast<std::uint8_t>(std::stoi(all.substr(2 * i, 2), nullptr, 16)));
  joined.push_back(0);
  std::vector<std::uint8_t> digest(20);
  SHA1(joined.data(), joined.size(), digest.data());
  EXPECT_EQ(form.txtDigest.Text, HexOf(digest));

  // The keyed hash is the panel's digest as shown, lower-case digits or not.
  form.txtKey.Text = "7e1f00c2d94b36a8a8634bd9c2001fe7";
  form.txtMsg.Text = "00ff00ee00dd00cc00bb00aa0099008800770066";
  form.cmdTarvexHMAC_Click();
  const auto p2 = ExpectedDigest(AuthMorlin::kDefaultKey, ChallengeBytes(form.txtMsg.Text));
  EXPECT_EQ(form.txtDigest.Text, HexOf({p2.begin(), p2.end()}));

  form.cmdQuit_Click();
  EXPECT_FALSE(form.Visible);
}

}  // namespace
}  // namespace ombrelay
