// Unseal, full access, authentication and key change against the simulated gauge, each with
// its whole trace; the digests in the traces are worked out here from the challenge the gauge
// gave.

#include <gtest/gtest.h>

#include "tests/support/expected_trace.h"
#include "tests/support/security_bench.h"

namespace ombrelay {
namespace {

using sim::SecurityMode;
using testing::ExpectedDigest;
using testing::HexOf;
using testing::MatchesTrace;
using testing::SecurityBench;
using testing::TurnedHexOf;

constexpr std::int16_t kSeal = 0;
constexpr std::int16_t kUnseal = 1;
constexpr std::int16_t kFullAccess = 2;
constexpr const char* kOtherKey = "00112233445566778899aabbccddeeff";

std::array<std::uint8_t, 20> Displayed(const std::vector<std::uint8_t>& busChallenge) {
  std::array<std::uint8_t, 20> challenge{};
  std::reverse_copy(busChallenge.begin(), busChallenge.end(), challenge.begin());
  return challenge;
}

// The digest a gauge with key expects for the challenge it gave, in bus order.
std::string BusDigest(const std::string& key, const std::vector<std::uint8_t>& busChallenge) {
  const auto p2 = ExpectedDigest(key, Displayed(busChallenge));
  return TurnedHexOf({p2.begin(), p2.end()});
}

// Clicks btnGo with option and checks the trace; word is the ManufacturerAccess word sent.
void Handshake(SecurityBench& bench, std::int16_t option, const std::string& trace,
               const char* word) {
  bench.sim.Restart();
  bench.Go(option);
  const std::vector<std::uint8_t> challenge = bench.Challenge();
  EXPECT_TRUE(MatchesTrace(
      bench.Trace(), trace,
      {{"word", word}, {"digest", BusDigest(bench.panel.txtUnsealKey.Text, challenge)}}));
  EXPECT_EQ(bench.panel.txtSealRandomfromDevice.Text, TurnedHexOf(challenge));
  EXPECT_EQ(bench.panel.txtSealRandomNumberandKey.Text,
            bench.panel.txtUnsealKey.Text + TurnedHexOf(challenge));
  // The digest shows in reading order, the turn of what went on the bus.
  const auto p2 = ExpectedDigest(bench.panel.txtUnsealKey.Text, Displayed(challenge));
  EXPECT_EQ(bench.panel.txtDigest.Text, HexOf({p2.begin(), p2.end()}));
}

TEST(Security, StartsUpShowingTheMode) {
  SecurityBench bench;
  bench.panel.UserControl_Show();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "security/startup-morlin"));
  for (TextBox* box : bench.panel.KeyBoxes())
    EXPECT_EQ(box->Text, AuthMorlin::kDefaultKey);
  EXPECT_EQ(bench.panel.ssTabAuth.Tab, 0);

  SecurityBench alone(std::nullopt);
  alone.panel.UserControl_Show();
  EXPECT_TRUE(MatchesTrace(alone.Trace(), "security/startup-no-gauge",
                           {{"appdir", OMBRELAY_SOURCE_APPDIR}}));
  EXPECT_EQ(alone.panel.lblSealStatus.Caption, "Last Operation Failed");
}

TEST(Security, WalksSealedUnsealedFullAccessSealedAndStraightToFullAccess) {
  SecurityBench bench;
  bench.sim.gauge->SetSecurityMode(SecurityMode::Sealed);
  bench.StartUp();
  Handshake(bench, kUnseal, "security/sealed-to-unsealed", "0031");
  EXPECT_EQ(bench.sim.gauge->GetSecurityMode(), SecurityMode::Unsealed);
  Handshake(bench, kFullAccess, "security/unsealed-to-full-access", "0032");
  EXPECT_EQ(bench.sim.gauge->GetSecurityMode(), SecurityMode::FullAccess);
  bench.sim.Restart();
  bench.Go(kSeal);
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "security/go-seal"));
  Handshake(bench, kFullAccess, "security/sealed-to-full-access", "0032");
  EXPECT_EQ(bench.panel.lblSealStatus.Caption, "Full Access");
  EXPECT_TRUE(bench.sim.MessageTexts().empty());
}

TEST(Security, AWrongKeyRunsTheHandshakeAndLeavesTheMode) {
  SecurityBench bench;
  bench.sim.gauge->SetSecurityMode(SecurityMode::Sealed);
  bench.StartUp();
  bench.panel.txtUnsealKey.Text = kOtherKey;
  Handshake(bench, kUnseal, "security/unseal-wrong-key", "0031");
  EXPECT_EQ(bench.sim.gauge->GetSecurityMode(), SecurityMode::Sealed);
  EXPECT_EQ(bench.panel.lblSealStatus.Caption, "Sealed");
  EXPECT_TRUE(bench.sim.MessageTexts().empty());
}

// The challenge block the panel wrote, and the verdict for the key in txtAuthKey.
void Authenticate(SecurityBench& bench, const std::string& verdict) {
  bench.sim.Restart();
  bench.panel.btnAuthenticate_Click();
  const std::string challengeText = bench.panel.txtAuthRandomNumber.Text;
  ASSERT_EQ(challengeText.size(), 40U);
  std::vector<std::uint8_t> shown;
  for (std::size_t i = 0; i < 20; ++i)
    shown.push_back(
        static_cast<std::uint8_t>(std::stoi(challengeText.substr(2 * i, 2), nullptr, 16)));
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "security/authenticate",
                           {{"challenge", TurnedHexOf(shown)}, {"verdict", verdict}}));
  const auto expected =
      ExpectedDigest(bench.panel.txtAuthKey.Text, Displayed({shown.rbegin(), shown.rend()}));
  EXPECT_EQ(bench.panel.txtSHA1Result.Text, HexOf({expected.begin(), expected.end()}));
  EXPECT_EQ(bench.panel.txtRndNumberandKey.Text, bench.panel.txtAuthKey.Text + challengeText);
}

TEST(Security, AuthenticatesTheRightKeyAndNotAKeyOneDigitOff) {
  SecurityBench bench;
  bench.sim.gauge->SetSecurityMode(SecurityMode::Sealed);
  bench.StartUp();
  Authenticate(bench, "\"Authentication Successful\"");
  EXPECT_EQ(bench.panel.txtPartDigest.Text, bench.panel.txtSHA1Result.Text);
  const std::string firstChallenge = bench.panel.txtAuthRandomNumber.Text;

  bench.panel.txtAuthKey.Text = "7E1F00C2D94B36A8A8634BD9C2001FE6";
  Authenticate(bench, "\"Authentication Failed\" red");
  EXPECT_NE(bench.panel.txtPartDigest.Text, bench.panel.txtSHA1Result.Text);
  EXPECT_NE(bench.panel.txtAuthRandomNumber.Text, firstChallenge) << "a fresh challenge";

  // Each byte is the generator's value times 255, rounded half to even: 64.5 gives 64.
  bench.sim.platform.QueueRandom({4243649.0F / 16777216.0F, 0.999F, 0.0F});
  Authenticate(bench, "\"Authentication Failed\" red");
  EXPECT_EQ(bench.panel.txtAuthRandomNumber.Text.substr(0, 6), "40FF00");

  // Lower case is the same key to the digest; the box shows it as typed.
  bench.panel.txtAuthKey.Text = "7e1f00c2d94b36a8a8634bd9c2001fe7";
  Authenticate(bench, "\"Authentication Successful\"");
  EXPECT_EQ(bench.panel.lblAuthenticationStatus.ForeColor, 0x000000U);
}

struct KeySlot {
  const char* word;
  void (AuthMorlin::*click)();
  TextBox AuthMorlin::*newKey;
  TextBox AuthMorlin::*digest;
  TextBox AuthMorlin::*reply;
  const char* progress;
  const char* success;
  const char* failure;
  sim::GaugeKey key;
};

const KeySlot kSlots[] = {
    {"0035", &AuthMorlin::Change_Unseal_Key_Click, &AuthMorlin::txtUnsealKeyNew,
     &AuthMorlin::txtUnsealRandomNumandKey, &AuthMorlin::txtNewUnsealKeyResponseDev,
     "Changing Unsealkey...", "Unseal Key Change Successful", "Unseal Key Change Failed",
     sim::GaugeKey::Unseal},
    {"0036", &AuthMorlin::Change_FullAccl_Key_Click, &AuthMorlin::txtFullAcclKeyNew,
     &AuthMorlin::txtFullAcclRandomNumandKey, &AuthMorlin::txtNewFullAccKeyResponseDev,
     "Changing Full Access Key ...", "Full Access Key Change Successful",
     "Full Access Key Change Failed", sim::GaugeKey::FullAccess},
    {"0037", &AuthMorlin::Change_Auth_Key_Click, &AuthMorlin::txtAuthlKeyNew,
     &AuthMorlin::txtAuthRandomNumandKey, &AuthMorlin::txtNewAuthKeyResponseDev,
     "Changing Authentication Key ...", "Authentication Change Successful",
     "Authentication Change Failed", sim::GaugeKey::Authentication},
};

// Changes the key of slot to kOtherKey; in Full Access the gauge takes it, elsewhere not.
void ChangeKey(SecurityBench& bench, const KeySlot& slot, bool taken) {
  bench.sim.Restart();
  (bench.panel.*slot.newKey).Text = kOtherKey;
  (bench.panel.*slot.click)();
  const std::vector<std::uint8_t> challenge = bench.Challenge();
  const auto p2 = ExpectedDigest(taken ? kOtherKey : AuthMorlin::kDefaultKey, Displayed(challenge));
  const auto newKey = testing::KeyBytes(kOtherKey);
  const std::string keyOnBus = TurnedHexOf({newKey.begin(), newKey.end()});
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "security/change-key",
                           {{"word", slot.word},
                            {"progress", slot.progress},
                            {"key", keyOnBus},
                            {"verdict", taken ? "\"" + std::string(slot.success) + "\""
                                              : "\"" + std::string(slot.failure) + "\" red"}}));
  EXPECT_EQ((bench.panel.*slot.reply).Text, HexOf({p2.begin(), p2.end()}));
  // The panel's own digest is always under the new key, shown in reading order.
  const auto expected = ExpectedDigest(kOtherKey, Displayed(challenge));
  EXPECT_EQ((bench.panel.*slot.digest).Text, HexOf({expected.begin(), expected.end()}));
}

TEST(Security, ChangesEachKeyInFullAccessOnly) {
  for (const KeySlot& slot : kSlots) {
    SCOPED_TRACE(slot.word);
    SecurityBench sealed;
    sealed.sim.gauge->SetSecurityMode(SecurityMode::Sealed);
    sealed.StartUp();
    ChangeKey(sealed, slot, false);
    EXPECT_EQ(sealed.sim.gauge->Key(slot.key), testing::KeyBytes(AuthMorlin::kDefaultKey));

    SecurityBench open;
    open.sim.gauge->SetSecurityMode(SecurityMode::FullAccess);
    open.StartUp();
    ChangeKey(open, slot, true);
    EXPECT_EQ(open.sim.gauge->Key(slot.key), testing::KeyBytes(kOtherKey));
  }
}

TEST(Security, TheGaugeThenUnsealsOnlyWithTheNewKey) {
  SecurityBench bench;
  bench.sim.gauge->SetSecurityMode(SecurityMode::FullAccess);
  bench.StartUp();
  ChangeKey(bench, kSlots[0], true);
  bench.Go(kSeal);
  bench.Go(kUnseal);
  EXPECT_EQ(bench.panel.lblSealStatus.Caption, "Sealed") << "the old key no longer opens it";
  bench.panel.txtUnsealKey.Text = kOtherKey;
  bench.Go(kUnseal);
  EXPECT_EQ(bench.panel.lblSealStatus.Caption, "Unsealed");

  // While Sealed the change fails and the old key still opens the gauge.
  SecurityBench sealed;
  sealed.sim.gauge->SetSecurityMode(SecurityMode::Sealed);
  sealed.StartUp();
  ChangeKey(sealed, kSlots[0], false);
  sealed.Go(kUnseal);
  EXPECT_EQ(sealed.panel.lblSealStatus.Caption, "Unsealed");
}

}  // namespace
}  // namespace ombrelay
