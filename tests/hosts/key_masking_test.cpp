// Keys in the record of a recording host: only the key block of a key change is withheld, from
// the record and the log alike, while the gauge still gets the key.

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>

#include "hosts/recording_host.h"
#include "hosts/sim_host.h"
#include "sim/sample_gauges.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kAddress = 23;
constexpr std::int32_t kAuthentication = 0x2F;

class KeyMaskingTest : public ::testing::Test {
 protected:
  KeyMaskingTest() {
    bus.Attach(gauge.get());
    gauge->SetSecurityMode(sim::SecurityMode::FullAccess);
  }

  // The key change's words and blocks, as the security panel sends them.
  void ChangeKey(std::int16_t word) {
    host.WriteSMBusWord_(0x00, word, kAddress);
    std::array<std::uint8_t, 32> challenge{};
    std::int16_t length = 0;
    host.ReadSMBusBlock_(kAuthentication, challenge, length, kAddress);
    host.WriteSMBusBlock(kAuthentication, key, 16, kAddress);
  }

  sim::VirtualClock clock;
  std::unique_ptr<sim::Gauge> gauge = sim::MakeSampleGauge(sim::Family::Morlin, clock);
  SimHost bus{clock};
  RecordingHost host{bus, [this] { return clock.NowMs(); }};
  const std::array<std::uint8_t, 16> key = {0xFF, 0xEE, 0xDD, 0xCC, 0xBB, 0xAA, 0x99, 0x88,
                                            0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11, 0x00};
};

TEST_F(KeyMaskingTest, WithholdsTheKeyBlockOfEveryKeyChange) {
  const auto path = std::filesystem::path(::testing::TempDir()) / "key_masking_test.jsonl";
  ASSERT_TRUE(host.OpenLog(path.string()));
  host.MaskKeys();
  for (const std::int16_t word : {0x0035, 0x0036, 0x0037}) {
    ChangeKey(word);
    const BusOperation& block = host.Operations().back();
    EXPECT_TRUE(block.masked) << word;
    EXPECT_EQ(block.data, std::vector<std::uint8_t>(16, 0));
    EXPECT_EQ(ToJson(block)["data"], std::string(32, '*'));
  }
  // The gauge took the last key all the same.
  EXPECT_EQ(gauge->Key(sim::GaugeKey::Authentication)[0], 0x00);
  EXPECT_EQ(gauge->Key(sim::GaugeKey::Authentication)[15], 0xFF);

  // A challenge written for authentication is no key.
  const std::array<std::uint8_t, 20> challenge{1, 2, 3};
  host.WriteSMBusBlock(kAuthentication, challenge, 20, kAddress);
  EXPECT_FALSE(host.Operations().back().masked);

  std::ifstream file(path);
  int maskedLines = 0;
  for (std::string line; std::getline(file, line);) {
    EXPECT_EQ(line.find("FFEEDDCC"), std::string::npos);
    maskedLines += nlohmann::json::parse(line)["data"] == std::string(32, '*') ? 1 : 0;
  }
  EXPECT_EQ(maskedLines, 3);
}

TEST_F(KeyMaskingTest, KeepsEverythingUnlessAsked) {
  ChangeKey(0x0035);
  EXPECT_FALSE(host.Operations().back().masked);
  EXPECT_EQ(host.Operations().back().data, std::vector<std::uint8_t>(key.begin(), key.end()));
}

}  // namespace
}  // namespace ombrelay
