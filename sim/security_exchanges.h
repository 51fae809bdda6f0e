#pragma once
// The gauge's security: the seal word, the challenge and response that move it up to Unsealed
// or Full Access, the host's authentication of the gauge, and the change of its three keys. All
// run on the shared data command, every block least significant byte first. The challenges the
// gauge sends come from a generator with a fixed seed, so that a run repeats unless reseeded.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <span>

#include "sim/challenge_digest.h"
#include "sim/command_set.h"
#include "sim/manufacturer_access.h"
#include "sim/security_mode.h"
#include "sim/selected_block.h"

namespace ombrelay::sim {

enum class GaugeKey { Unseal, FullAccess, Authentication };

class SecurityExchanges {
 public:
  static constexpr std::uint16_t kSealWord = 0x0030;
  static constexpr std::uint16_t kUnsealWord = 0x0031;
  static constexpr std::uint16_t kFullAccessWord = 0x0032;
  // Every key until it is changed.
  static constexpr SecurityKey kDefaultKey = {0x7E, 0x1F, 0x00, 0xC2, 0xD9, 0x4B, 0x36, 0xA8,
                                              0xA8, 0x63, 0x4B, 0xD9, 0xC2, 0x00, 0x1F, 0xE7};
  static constexpr std::uint32_t kDefaultSeed = 1;

  static constexpr std::uint16_t KeyChangeWord(GaugeKey key) {
    return static_cast<std::uint16_t>(0x0035 + Index(key));
  }

  // Installs the words, and takes the shared data command's unclaimed writes as challenges.
  SecurityExchanges(ManufacturerAccess& access, SelectedBlock& shared, SecurityMode& mode);
  SecurityExchanges(const SecurityExchanges&) = delete;
  SecurityExchanges& operator=(const SecurityExchanges&) = delete;

  const SecurityKey& Key(GaugeKey key) const { return keys_[Index(key)]; }
  void SetKey(GaugeKey key, const SecurityKey& value) { keys_[Index(key)] = value; }
  void SeedChallenges(std::uint32_t seed) { random_.seed(seed); }

 private:
  // What the armed exchange takes as its next write.
  enum class Awaiting { Nothing, Response, NewKey };

  static constexpr std::size_t Index(GaugeKey key) { return static_cast<std::size_t>(key); }

  void Arm(GaugeKey key, Awaiting awaiting);
  bool TakeArmedWrite(std::span<const std::uint8_t> data);
  bool Authenticate(std::span<const std::uint8_t> data);
  Bytes DigestOnBus() const;

  SecurityMode& mode_;
  SelectedBlock& shared_;
  std::array<SecurityKey, 3> keys_{kDefaultKey, kDefaultKey, kDefaultKey};
  std::mt19937 random_{kDefaultSeed};
  // The exchange under way: its key, its challenge, what it waits for and what a read answers.
  GaugeKey key_ = GaugeKey::Authentication;
  Challenge challenge_{};
  Awaiting awaiting_ = Awaiting::Nothing;
  std::optional<Bytes> answer_;
};

}  // namespace ombrelay::sim
