#include "sim/security_exchanges.h"

#include <algorithm>

namespace ombrelay::sim {
namespace {

constexpr std::size_t kChallengeLength = std::tuple_size_v<Challenge>;
constexpr std::size_t kKeyLength = std::tuple_size_v<SecurityKey>;

// The bus carries these blocks least significant byte first.
template <std::size_t N>
Bytes OnBus(const std::array<std::uint8_t, N>& bytes) {
  return {bytes.rbegin(), bytes.rend()};
}

}  // namespace

SecurityExchanges::SecurityExchanges(ManufacturerAccess& access, SelectedBlock& shared,
                                     SecurityMode& mode)
    : mode_(mode), shared_(shared) {
  access.On(kSealWord, [this] { mode_ = SecurityMode::Sealed; });
  access.On(kUnsealWord, [this] { Arm(GaugeKey::Unseal, Awaiting::Response); });
  access.On(kFullAccessWord, [this] { Arm(GaugeKey::FullAccess, Awaiting::Response); });
  for (const GaugeKey key : {GaugeKey::Unseal, GaugeKey::FullAccess, GaugeKey::Authentication})
    access.On(KeyChangeWord(key), [this, key] { Arm(key, Awaiting::NewKey); });
  shared.OnUnclaimedWrite(
      [this](std::span<const std::uint8_t> data) { return Authenticate(data); });
}

void SecurityExchanges::Arm(GaugeKey key, Awaiting awaiting) {
  for (std::uint8_t& byte : challenge_)
    byte = static_cast<std::uint8_t>(random_());
  key_ = key;
  awaiting_ = awaiting;
  answer_ = OnBus(challenge_);
  shared_.Select({[this] { return answer_; },
                  [this](std::span<const std::uint8_t> data) { return TakeArmedWrite(data); }});
}

bool SecurityExchanges::TakeArmedWrite(std::span<const std::uint8_t> data) {
  switch (awaiting_) {
    case Awaiting::Response: {
      if (data.size() != kChallengeLength) return false;
      const Bytes expected = DigestOnBus();
      // Only ever up: the lower the mode's code, the more it allows.
      const SecurityMode granted =
          key_ == GaugeKey::Unseal ? SecurityMode::Unsealed : SecurityMode::FullAccess;
      if (std::equal(data.begin(), data.end(), expected.begin(), expected.end()))
        mode_ = std::min(mode_, granted);
      awaiting_ = Awaiting::Nothing;
      answer_.reset();
      return true;
    }
    case Awaiting::NewKey:
      if (data.size() != kKeyLength) return false;
      if (mode_ == SecurityMode::FullAccess)
        std::reverse_copy(data.begin(), data.end(), keys_[Index(key_)].begin());
      // The answer proves which key the gauge holds now, whether or not it took the new one.
      awaiting_ = Awaiting::Nothing;
      answer_ = DigestOnBus();
      return true;
    case Awaiting::Nothing:
      break;
  }
  return false;
}

// Whatever was selected, and in every mode: the host may check the gauge at any time.
bool SecurityExchanges::Authenticate(std::span<const std::uint8_t> data) {
  if (data.size() != kChallengeLength) return false;
  std::reverse_copy(data.begin(), data.end(), challenge_.begin());
  key_ = GaugeKey::Authentication;
  awaiting_ = Awaiting::Nothing;
  answer_ = DigestOnBus();
  shared_.Select({[this] { return answer_; }, {}});
  return true;
}

Bytes SecurityExchanges::DigestOnBus() const {
  return OnBus(ChallengeDigest(Key(key_), challenge_));
}

}  // namespace ombrelay::sim
