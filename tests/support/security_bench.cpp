#include "tests/support/security_bench.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "shell/numeric.h"
#include "shell/utils.h"
#include "sim/challenge_digest.h"

namespace ombrelay::testing {
namespace {

constexpr std::int32_t kAuthenticationCommand = 0x2F;

std::string OnOff(bool on) {
  return on ? "on" : "off";
}

std::string Status(const char* name, const Label& label) {
  return std::string(name) + " \"" + label.Caption + "\"" +
         (label.ForeColor == 0xFF0000 ? " red" : "");
}

}  // namespace

FlowTrace::Probe SecurityProbe(const AuthMorlin& panel) {
  return [&panel] {
    return std::vector<std::string>{"go " + OnOff(panel.btnGo.Enabled),
                                    "authenticate " + OnOff(panel.btnAuthenticate.Enabled),
                                    Status("mode", panel.lblSealStatus),
                                    Status("authentication", panel.lblAuthenticationStatus),
                                    Status("key change", panel.lblUnsealkeyStatus)};
  };
}

std::array<std::uint8_t, 16> KeyBytes(const std::string& key) {
  std::array<std::uint8_t, 16> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<std::uint8_t>(std::stoi(key.substr(2 * i, 2), nullptr, 16));
  return bytes;
}

std::array<std::uint8_t, 20> ExpectedDigest(const std::string& key,
                                            const std::array<std::uint8_t, 20>& challenge) {
  return sim::ChallengeDigest(KeyBytes(key), challenge);
}

std::string HexOf(const std::vector<std::uint8_t>& bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes)
    text += PadLeftZeros(Hex(byte), 2);
  return text;
}

std::string TurnedHexOf(std::vector<std::uint8_t> bytes) {
  std::reverse(bytes.begin(), bytes.end());
  return HexOf(bytes);
}

SecurityBench::SecurityBench(std::optional<sim::Family> family)
    : sim(family), panel(sim.host, sim.platform) {
  sim.trace.Watch(SecurityProbe(panel));
}

void SecurityBench::StartUp() {
  panel.UserControl_Show();
  EXPECT_TRUE(sim.MessageTexts().empty()) << sim.MessageTexts().front();
  sim.Restart();
}

void Go(AuthMorlin& panel, std::int16_t option) {
  panel.optionAction[static_cast<std::size_t>(option)].Value = true;
  panel.optionAction_Click(option);
  panel.btnGo_Click();
}

void SecurityBench::Go(std::int16_t option) {
  testing::Go(panel, option);
}

std::vector<std::uint8_t> SecurityBench::Challenge() const {
  const auto& operations = sim.host.Operations();
  const auto read = std::find_if(operations.begin(), operations.end(), [](const BusOperation& op) {
    return op.op == "ReadSMBusBlock_" && op.cmd == kAuthenticationCommand && op.status == 0;
  });
  if (read == operations.end()) return {};
  return {read->data.begin(), read->data.begin() + std::min<std::size_t>(read->data.size(), 20)};
}

}  // namespace ombrelay::testing
