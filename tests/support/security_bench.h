#pragma once
// The security panel on a simulated gauge, with its flows traced: bus, waits, boxes, and the
// panel's buttons and status labels where they change.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "security/auth_morlin.h"
#include "tests/support/sim_bench.h"

namespace ombrelay::testing {

// A new Unseal key, for the key changes.
inline constexpr const char* kNewUnsealKey = "0123456789ABCDEF00112233445566FF";

// Selects the option of btnGo and clicks it.
void Go(AuthMorlin& panel, std::int16_t option);

// Lines "go on|off", "authenticate on|off", "mode \"TEXT\"", "authentication \"TEXT\"" and
// "key change \"TEXT\"", the last two with " red" behind them while red.
FlowTrace::Probe SecurityProbe(const AuthMorlin& panel);

// The 16 bytes of a key text, in text order.
std::array<std::uint8_t, 16> KeyBytes(const std::string& key);
// The keyed digest of a challenge as the gauge works it out, in display order: the panel's own
// arithmetic is not used.
std::array<std::uint8_t, 20> ExpectedDigest(const std::string& key,
                                            const std::array<std::uint8_t, 20>& challenge);
// Upper-case hex, first byte first, or last byte first.
std::string HexOf(const std::vector<std::uint8_t>& bytes);
std::string TurnedHexOf(std::vector<std::uint8_t> bytes);

struct SecurityBench {
  explicit SecurityBench(std::optional<sim::Family> family = sim::Family::Morlin);

  // Runs start-up, which must end without a box, and forgets its trace.
  void StartUp();
  std::vector<std::string> Trace() { return sim.trace.Lines(); }
  // Selects the option of btnGo and clicks it.
  void Go(std::int16_t option);
  // The challenge the gauge gave on the authentication command since the last restart, as the
  // bus carried it: the first block read there.
  std::vector<std::uint8_t> Challenge() const;

  SimBench sim;
  AuthMorlin panel;
};

}  // namespace ombrelay::testing
