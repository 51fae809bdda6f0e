#include "sim/security_exchanges.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "sim/dataflash_rows.h"
#include "sim/gauge.h"

namespace ombrelay::sim {
namespace {

constexpr std::uint8_t kAccess = Gauge::kManufacturerAccessCommand;
constexpr std::uint8_t kShared = Gauge::kSharedDataCommand;
using Security = SecurityExchanges;

// Keys distinct from each other, so that a digest under the wrong one shows.
constexpr SecurityKey KeyFrom(std::uint8_t first) {
  SecurityKey key{};
  for (std::size_t i = 0; i < key.size(); ++i)
    key[i] = static_cast<std::uint8_t>(first + 0x11 * i);
  return key;
}
constexpr SecurityKey kUnsealKey = KeyFrom(0x00);
constexpr SecurityKey kFullAccessKey = KeyFrom(0x40);
constexpr SecurityKey kAuthenticationKey = KeyFrom(0x80);
constexpr SecurityKey kNewKey = KeyFrom(0xC3);

template <std::size_t N>
Bytes Reversed(const std::array<std::uint8_t, N>& bytes) {
  return {bytes.rbegin(), bytes.rend()};
}

// The digest, in bus order, of a challenge as the bus carried it.
Bytes DigestOnBus(const SecurityKey& key, const Bytes& challengeOnBus) {
  Challenge challenge{};
  EXPECT_EQ(challengeOnBus.size(), challenge.size());
  std::copy_n(challengeOnBus.rbegin(), challenge.size(), challenge.begin());
  return Reversed(ChallengeDigest(key, challenge));
}

Bytes Arm(Gauge& gauge, std::uint16_t word) {
  EXPECT_TRUE(gauge.WriteWord(kAccess, word));
  return gauge.ReadBlock(kShared).value_or(Bytes(20, 0));
}

// Arms word and answers its challenge with the digest under key; gives the response sent.
Bytes Answer(Gauge& gauge, std::uint16_t word, const SecurityKey& key) {
  const Bytes response = DigestOnBus(key, Arm(gauge, word));
  EXPECT_TRUE(gauge.WriteBlock(kShared, response));
  return response;
}

class GaugeSecurity : public ::testing::Test {
 protected:
  GaugeSecurity() {
    gauge.SetKey(GaugeKey::Unseal, kUnsealKey);
    gauge.SetKey(GaugeKey::FullAccess, kFullAccessKey);
    gauge.SetKey(GaugeKey::Authentication, kAuthenticationKey);
  }

  VirtualClock clock;
  Gauge gauge{Family::Morlin, {}, clock};
};

TEST_F(GaugeSecurity, SealFromAnyModeAndMoveOnlyUpWithTheRightDigest) {
  for (const SecurityMode mode : {SecurityMode::FullAccess, SecurityMode::Unsealed}) {
    gauge.SetSecurityMode(mode);
    EXPECT_TRUE(gauge.WriteWord(kAccess, Security::kSealWord));
    EXPECT_EQ(gauge.GetSecurityMode(), SecurityMode::Sealed);
  }
  struct Case {
    SecurityMode from;
    std::uint16_t word;
    SecurityKey key;
    SecurityMode to;
  };
  const Case cases[] = {
      {SecurityMode::Sealed, Security::kUnsealWord, kUnsealKey, SecurityMode::Unsealed},
      {SecurityMode::Sealed, Security::kUnsealWord, kFullAccessKey, SecurityMode::Sealed},
      {SecurityMode::Sealed, Security::kFullAccessWord, kFullAccessKey, SecurityMode::FullAccess},
      {SecurityMode::Unsealed, Security::kFullAccessWord, kUnsealKey, SecurityMode::Unsealed},
      {SecurityMode::FullAccess, Security::kUnsealWord, kUnsealKey, SecurityMode::FullAccess},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "word " << c.word << " from " << int(c.from));
    gauge.SetSecurityMode(c.from);
    Answer(gauge, c.word, c.key);
    EXPECT_EQ(gauge.GetSecurityMode(), c.to);
  }
  EXPECT_TRUE(gauge.WriteWord(kAccess, ManufacturerData::kOperationStatusWord));
  EXPECT_EQ(gauge.ReadBlock(ManufacturerData::kCommand)->at(1) & 3, 1) << "shown as Full Access";
}

TEST_F(GaugeSecurity, AResponseCountsOnceOnlyAtTwentyBytesInBusOrder) {
  gauge.SetSecurityMode(SecurityMode::Sealed);
  const Bytes challenge = Arm(gauge, Security::kUnsealWord);
  Bytes response = DigestOnBus(kUnsealKey, challenge);
  EXPECT_FALSE(gauge.WriteBlock(kShared, Bytes(response.begin(), response.begin() + 16)));
  EXPECT_TRUE(gauge.WriteBlock(kShared, Bytes(response.rbegin(), response.rend())));
  EXPECT_EQ(gauge.GetSecurityMode(), SecurityMode::Sealed) << "display order is refused";

  response = Answer(gauge, Security::kUnsealWord, kUnsealKey);
  ASSERT_EQ(gauge.GetSecurityMode(), SecurityMode::Unsealed);
  EXPECT_FALSE(gauge.ReadBlock(kShared)) << "nothing left to read";
  gauge.SetSecurityMode(SecurityMode::Sealed);
  EXPECT_TRUE(gauge.WriteBlock(kShared, response));
  EXPECT_EQ(gauge.GetSecurityMode(), SecurityMode::Sealed) << "spent";
  EXPECT_EQ(gauge.ReadBlock(kShared), DigestOnBus(kAuthenticationKey, response))
      << "taken as a challenge instead";
}

// Whatever was selected last and in every mode; the host writes each challenge twice.
TEST_F(GaugeSecurity, AuthenticationAnswersTheLastChallengeUnderItsKey) {
  const Bytes first(20, 0x3C);
  const Bytes second = Reversed(Challenge{0x00, 0x9A, 0x41});
  for (const SecurityMode mode :
       {SecurityMode::Sealed, SecurityMode::Unsealed, SecurityMode::FullAccess}) {
    gauge.SetSecurityMode(mode);
    EXPECT_TRUE(gauge.WriteWord(kAccess, DataflashRows::kFirstRowWord));
    EXPECT_TRUE(gauge.WriteBlock(kShared, first));
    EXPECT_EQ(gauge.ReadBlock(kShared), DigestOnBus(kAuthenticationKey, first));
    EXPECT_TRUE(gauge.WriteBlock(kShared, second));
    EXPECT_TRUE(gauge.WriteBlock(kShared, second));
    EXPECT_EQ(gauge.ReadBlock(kShared), DigestOnBus(kAuthenticationKey, second));
  }
  EXPECT_TRUE(gauge.WriteWord(kAccess, DataflashRows::kFirstRowWord));
  EXPECT_TRUE(gauge.WriteBlock(kShared, Bytes(32, 0x5A))) << "the row still takes its writes";
}

// A transfer that fails never reaches the gauge, and a key of the wrong length is no key: the
// exchange stays as it was.
TEST_F(GaugeSecurity, FailedOrMisfitWritesLeaveTheKeyChangeArmed) {
  gauge.SetSecurityMode(SecurityMode::FullAccess);
  const Bytes challenge = Arm(gauge, Security::KeyChangeWord(GaugeKey::FullAccess));
  gauge.FailNext(Transfer::BlockRead, 1);
  EXPECT_FALSE(gauge.ReadBlock(kShared));
  gauge.FailNext(Transfer::BlockWrite, 1);
  EXPECT_FALSE(gauge.WriteBlock(kShared, Reversed(kNewKey)));
  EXPECT_FALSE(gauge.WriteBlock(kShared, Bytes(15, 0)));
  EXPECT_EQ(gauge.Key(GaugeKey::FullAccess), kFullAccessKey);
  EXPECT_EQ(gauge.ReadBlock(kShared), challenge);
  EXPECT_TRUE(gauge.WriteBlock(kShared, Reversed(kNewKey)));
  EXPECT_EQ(gauge.ReadBlock(kShared), DigestOnBus(kNewKey, challenge));
}

TEST_F(GaugeSecurity, EachArmingSendsAFreshChallengeThatTheSeedRepeats) {
  const auto challenges = [this](std::uint32_t seed) {
    gauge.SeedChallenges(seed);
    return std::vector<Bytes>{Arm(gauge, Security::kUnsealWord), Arm(gauge, Security::kUnsealWord),
                              Arm(gauge, Security::KeyChangeWord(GaugeKey::Authentication))};
  };
  const std::vector<Bytes> seeded = challenges(7);
  EXPECT_EQ(std::set<Bytes>(seeded.begin(), seeded.end()).size(), seeded.size());
  EXPECT_EQ(challenges(7), seeded);
  EXPECT_NE(challenges(8), seeded);
}

}  // namespace
}  // namespace ombrelay::sim
