#include "hosts/sim_host.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "sim/sample_gauges.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kAddress = 23;
constexpr std::int32_t kRsoc = sim::Gauge::kRelativeStateOfCharge;

class SimHostTest : public ::testing::Test {
 protected:
  SimHostTest() { host.Attach(gauge.get()); }

  void RequestIdentification() {
    const std::array<std::uint8_t, 129> zeros{};
    for (const std::int32_t command : {0x22, 0x20, 0x22})
      EXPECT_EQ(host.WriteSMBusBlock(command, zeros, 62, kAddress), 0);
  }

  sim::VirtualClock clock;
  std::unique_ptr<sim::Gauge> gauge = sim::MakeSampleGauge(sim::Family::Morlin, clock);
  SimHost host{clock};
};

TEST_F(SimHostTest, RefusesCommandsAndAddressesOffTheBus) {
  std::int16_t word = 0;
  for (const std::int32_t command : {-1, 256, 0x10000}) {
    EXPECT_NE(host.ReadSMBusWord_(command, word, kAddress), 0) << command;
    EXPECT_NE(host.WriteSMBusWord_(command, 1, kAddress), 0) << command;
  }
  for (const std::int16_t address : {0, 22, 24, -1}) {
    EXPECT_NE(host.ReadSMBusWord_(kRsoc, word, address), 0) << address;
  }
  EXPECT_EQ(word, 0) << "failed reads leave the word alone";
  EXPECT_EQ(host.ReadSMBusWord_(kRsoc, word, kAddress), 0);
  EXPECT_EQ(word, 80);

  host.Attach(nullptr);
  std::string text = "old";
  EXPECT_NE(host.ReadSMBusWord_(kRsoc, word, kAddress), 0);
  EXPECT_NE(host.ReadSMBusBlock(0x2F, text, kAddress), 0);
  EXPECT_EQ(text, "");
  EXPECT_EQ(host.CheckForError(), 0);
}

TEST_F(SimHostTest, BlockReadsFitTheCallersArrayOrFail) {
  RequestIdentification();
  std::array<std::uint8_t, 16> buffer{};
  buffer.fill(0xEE);
  std::int16_t length = 99;
  // A span of 10 for an 11-byte answer: nothing written anywhere, not even inside the span.
  EXPECT_EQ(host.ReadSMBusBlock_(0x2F, std::span(buffer).first(10), length, kAddress),
            SimHost::kAnswerTooLong);
  EXPECT_EQ(length, 0);
  EXPECT_EQ(buffer[0], 0xEE);
  EXPECT_EQ(buffer[10], 0xEE);

  EXPECT_EQ(host.ReadSMBusBlock_(0x2F, std::span(buffer).first(11), length, kAddress), 0);
  EXPECT_EQ(length, 11);
  EXPECT_EQ(sim::Bytes(buffer.begin(), buffer.begin() + 11), gauge->IdentificationBlock());
  EXPECT_EQ(buffer[11], 0xEE);

  gauge->FailNext(sim::Transfer::BlockRead, 1);
  EXPECT_EQ(host.ReadSMBusBlock_(0x2F, buffer, length, kAddress), SimHost::kNoAcknowledge);
  EXPECT_EQ(length, 0);
  EXPECT_NE(host.ReadSMBusBlock_(256, buffer, length, kAddress), 0);

  std::string text;
  EXPECT_EQ(host.ReadSMBusBlock(0x2F, text, kAddress), 0);
  EXPECT_EQ(sim::Bytes(text.begin(), text.end()), gauge->IdentificationBlock());
}

TEST_F(SimHostTest, BlockWritesSendExactlyLengthBytes) {
  sim::Bytes received;
  gauge->Commands().OnWriteBlock(0x40, [&](std::span<const std::uint8_t> data) {
    received.assign(data.begin(), data.end());
    return true;
  });
  const std::array<std::uint8_t, 5> data = {1, 2, 3, 4, 5};
  EXPECT_EQ(host.WriteSMBusBlock(0x40, data, 3, kAddress), 0);
  EXPECT_EQ(received, (sim::Bytes{1, 2, 3}));

  received = {9};
  EXPECT_EQ(host.WriteSMBusBlock(0x40, data, 6, kAddress), SimHost::kInvalidArgument);
  EXPECT_EQ(host.WriteSMBusBlock(0x40, data, -1, kAddress), SimHost::kInvalidArgument);
  const std::array<std::uint8_t, 300> large{};
  EXPECT_EQ(host.WriteSMBusBlock(0x40, large, 256, kAddress), SimHost::kInvalidArgument);
  EXPECT_EQ(host.WriteSMBusBlock(0x40, data, 3, 22), SimHost::kNoAcknowledge);
  EXPECT_EQ(received, sim::Bytes{9}) << "no refused write reached the gauge";
  EXPECT_EQ(host.WriteSMBusBlock(0x41, data, 3, kAddress), SimHost::kNoAcknowledge);
}

TEST_F(SimHostTest, WordsKeepTheirBitPatternAndFailedReadsLeaveTheOutputs) {
  gauge->SetWord(kRsoc, 0xFF80);
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  std::int16_t word = 0;
  EXPECT_EQ(host.ReadSMBusWord(kRsoc, high, low, kAddress), 0);
  EXPECT_EQ(high << 8 | low, 0xFF80);
  EXPECT_EQ(host.ReadSMBusWord_(kRsoc, word, kAddress), 0);
  EXPECT_EQ(word, -128);
  gauge->FailNext(sim::Transfer::WordRead, 2);
  EXPECT_NE(host.ReadSMBusWord(kRsoc, high, low, kAddress), 0);
  EXPECT_NE(host.ReadSMBusWord_(kRsoc, word, kAddress), 0);
  EXPECT_EQ(high << 8 | low, 0xFF80);
  EXPECT_EQ(word, -128);
  EXPECT_NE(host.WriteSMBusWord(kRsoc, 0, 1, kAddress), 0) << "a read-only word";
}

}  // namespace
}  // namespace ombrelay
