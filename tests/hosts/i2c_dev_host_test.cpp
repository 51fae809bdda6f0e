// The real host on buses that fail it: a bus that is missing, forbidden or no I2C bus, one that
// cannot carry what an operation needs, a gauge that does not answer, and a transfer that fails
// mid-calibration. Each gives a clear sentence, leaves one pending error per failed transfer, and
// writes nothing it should not; none hangs.

#include "hosts/i2c_dev_host.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "i2c_emulation/device_table.h"
#include "sim/sample_gauges.h"
#include "tests/support/emulated_bus_host.h"
#include "tests/support/expected_trace.h"
#include "tests/support/panel_bench.h"

namespace ombrelay {
namespace {

using i2c_emulation::AdapterTraits;
using i2c_emulation::EmulatedI2cAdapter;
using i2c_emulation::RegisteredDevice;

constexpr const char* kPath = "/dev/i2c-19";

std::string OpenError(const std::string& path, I2cDevHost::Options options = {}) {
  std::string error;
  EXPECT_EQ(I2cDevHost::Open(path, options, error), nullptr);
  return error;
}

TEST(I2cDevHostOpen, SaysWhyABusCannotBeUsed) {
  EXPECT_EQ(OpenError("/dev/i2c-98"),
            "/dev/i2c-98 does not exist. Plug the adapter in and load the i2c-dev module (sudo "
            "modprobe i2c-dev); ombrelay --list-buses lists the buses present.");
  EXPECT_EQ(OpenError("/dev/null"),
            "/dev/null is no I2C bus: it does not tell what it can do (Inappropriate ioctl for "
            "device).");
  {
    const RegisteredDevice forbidden(kPath, std::make_shared<EmulatedI2cAdapter>(nullptr),
                                     {.deny = true});
    EXPECT_EQ(OpenError(kPath), std::string("Permission denied opening ") + kPath +
                                    ". Add your user to the i2c group (sudo usermod -aG i2c "
                                    "$USER) and log in again.");
  }
  const RegisteredDevice withoutPec(
      kPath, std::make_shared<EmulatedI2cAdapter>(nullptr, AdapterTraits{.pec = false}));
  I2cDevHost::Options pec;
  pec.pec = true;
  EXPECT_EQ(OpenError(kPath, pec),
            std::string(kPath) + " cannot check packets: it lacks I2C_FUNC_SMBUS_PEC.");
  std::string error;
  EXPECT_NE(I2cDevHost::Open(kPath, {}, error), nullptr) << "the same bus opens without PEC";
}

// What one call puts on the wire, as the gauge receives it: the host's own frame where it uses
// plain I2C, the kernel's where it uses SMBus, PEC behind it when asked for.
struct Wire {
  const char* name;
  AdapterTraits bus;
  bool pec;
  std::function<Status(I2cDevHost&)> call;
  std::vector<std::uint8_t> bytes;
};

std::vector<std::uint8_t> Frame(std::initializer_list<std::uint8_t> head, std::size_t zeros,
                                std::initializer_list<std::uint8_t> tail = {}) {
  std::vector<std::uint8_t> bytes(head);
  bytes.resize(bytes.size() + zeros);
  bytes.insert(bytes.end(), tail);
  return bytes;
}

class WireBytes : public ::testing::TestWithParam<Wire> {};

TEST_P(WireBytes, AreTheFrameOfTheCall) {
  sim::VirtualClock clock;
  const auto gauge = sim::MakeSampleGauge(sim::Family::Morlin, clock);
  const auto adapter = std::make_shared<EmulatedI2cAdapter>(gauge.get(), GetParam().bus);
  const RegisteredDevice device(kPath, adapter);
  I2cDevHost::Options options;
  options.pec = GetParam().pec;
  std::string error;
  const auto host = I2cDevHost::Open(kPath, options, error);
  ASSERT_NE(host, nullptr) << error;
  EXPECT_EQ(GetParam().call(*host), 0);
  EXPECT_EQ(adapter->LastWritten(), GetParam().bytes);
}

const std::array<std::uint8_t, 62> kZeros{};
const std::array<std::uint8_t, 20> kChallenge = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10,
                                                 11, 12, 13, 14, 15, 16, 17, 18, 19, 20};
Status IdentificationRequest(I2cDevHost& host) {
  return host.WriteSMBusBlock(0x22, kZeros, 62, 0x17);
}
Status Challenge(I2cDevHost& host) {
  return host.WriteSMBusBlock(0x2F, kChallenge, 20, 0x16);
}
Status OperationStatusWord(I2cDevHost& host) {
  return host.WriteSMBusWord_(0x00, 0x0054, 0x16);
}

INSTANTIATE_TEST_SUITE_P(
    EachPath, WireBytes,
    ::testing::Values(
        Wire{"LongBlock", {}, false, IdentificationRequest, Frame({0x22, 62}, 62)},
        Wire{"LongBlockWithPec", {}, true, IdentificationRequest, Frame({0x22, 62}, 62, {0x3F})},
        Wire{"SmbusBlockWithPec",
             {},
             true,
             Challenge,
             [] {
               std::vector<std::uint8_t> bytes = {0x2F, 20};
               bytes.insert(bytes.end(), kChallenge.begin(), kChallenge.end());
               bytes.push_back(0x8B);
               return bytes;
             }()},
        Wire{"Word", {}, false, OperationStatusWord, {0x00, 0x54, 0x00}},
        Wire{"LongestSmbusBlockOnAnSmbusController",
             {.plainI2c = false},
             false,
             [](I2cDevHost& host) { return host.WriteSMBusBlock(0x22, kZeros, 32, 0x17); },
             Frame({0x22, 32}, 32)},
        Wire{"WordWithPecOnAnSmbusController",
             {.plainI2c = false},
             true,
             OperationStatusWord,
             {0x00, 0x54, 0x00, 0x4B}}),
    [](const ::testing::TestParamInfo<Wire>& wire) { return std::string(wire.param.name); });

// Calls the bus can carry but the transfer cannot end well: each fails with its errno, tells why
// in a sentence, and leaves exactly that errno pending once.
TEST(I2cDevHostFailures, SayWhyAndLeaveOneErrorEach) {
  sim::VirtualClock clock;
  const auto gauge = sim::MakeSampleGauge(sim::Family::Morlin, clock);
  const auto adapter = std::make_shared<EmulatedI2cAdapter>(gauge.get());
  const RegisteredDevice device(kPath, adapter);
  I2cDevHost::Options options;
  options.pec = true;
  std::string error;
  const auto host = I2cDevHost::Open(kPath, options, error);
  ASSERT_NE(host, nullptr) << error;
  std::vector<std::string> told;
  host->onFailure = [&told](const std::string& sentence) { told.push_back(sentence); };
  const std::string at = std::string(kPath) + ": ";

  std::int16_t word = 0;
  adapter->SpoilNextReply(0);
  EXPECT_EQ(host->ReadSMBusWord_(0x0D, word, 23), EBADMSG);
  EXPECT_EQ(word, 0) << "a spoilt word is not handed on";

  const std::uint64_t before = adapter->Transfers();
  EXPECT_EQ(host->WriteSMBusWord_(0x00, 0x0054, 0), EINVAL);
  EXPECT_EQ(host->WriteSMBusWord_(0x00, 0x0054, 0xF0), EINVAL);
  // A command that is none is told first, whatever the address.
  EXPECT_EQ(host->ReadSMBusWord_(256, word, 23), EINVAL);
  EXPECT_EQ(host->ReadSMBusWord_(-1, word, 0), EINVAL);
  EXPECT_EQ(host->WriteSMBusBlock(0x22, kZeros, 63, 0x16), EINVAL);
  EXPECT_EQ(adapter->Transfers(), before)
      << "the general call and reserved addresses, and a block beyond its array, never go out";

  ASSERT_EQ(IdentificationRequest(*host), 0);
  // A block read is the host's own plain I2C read, and the host checks its PEC.
  std::array<std::uint8_t, 32> block{};
  std::int16_t length = -1;
  adapter->SpoilNextReply(1);
  EXPECT_EQ(host->ReadSMBusBlock_(0x2F, block, length, 23), EBADMSG);
  EXPECT_EQ(length, 0);
  std::array<std::uint8_t, 10> small{};
  EXPECT_EQ(host->ReadSMBusBlock_(0x2F, small, length, 23), EMSGSIZE);
  EXPECT_EQ(length, 0);

  EXPECT_EQ(told, (std::vector<std::string>{
                      at + "ReadSMBusWord_ of 0x0D at address 0x0B failed: Bad message. The "
                           "packet error code did not match: noise on the bus, or a gauge without "
                           "PEC.",
                      at + "WriteSMBusWord_ of 0x00 at address 0x00 failed: address 0 is no "
                           "device's SMBus address; nothing was sent.",
                      at + "WriteSMBusWord_ of 0x00 at address 0x78 failed: address 240 is no "
                           "device's SMBus address; nothing was sent.",
                      at + "ReadSMBusWord_ of 0x00 at address 0x0B failed: command 256 is no "
                           "SMBus command.",
                      at + "ReadSMBusWord_ of 0xFF at address 0x00 failed: command -1 is no SMBus "
                           "command.",
                      at + "WriteSMBusBlock of 0x22 at address 0x0B failed: a block of 63 bytes "
                           "cannot go out.",
                      at + "ReadSMBusBlock_ of 0x2F at address 0x0B failed: Bad message. The "
                           "packet error code did not match: noise on the bus, or a gauge without "
                           "PEC.",
                      at + "ReadSMBusBlock_ of 0x2F at address 0x0B failed: the gauge answered "
                           "11 bytes where 10 fit."}));
  for (const int pending :
       {EBADMSG, EINVAL, EINVAL, EINVAL, EINVAL, EINVAL, EBADMSG, EMSGSIZE, 0, 0})
    EXPECT_EQ(host->CheckForError(), pending);
}

const std::string kNack =
    "No such device or address. Nothing acknowledged: is the gauge connected, powered and at "
    "this address?";

TEST(FailingBus, NothingAnswering) {
  testing::PanelBench bench;
  bench.sim.gauge->SetDisconnected(true);
  testing::EmulatedBusHost bus(bench.sim);
  bench.panel.UserControl_Show();
  EXPECT_TRUE(testing::MatchesTrace(bench.Trace(), "hosts/start-up-no-gauge-on-bus"));
  ASSERT_EQ(bus.Failures().size(), 6U);
  EXPECT_EQ(bus.Failures()[0], std::string(testing::EmulatedBusHost::kPath) +
                                   ": ReadSMBusWord_ of 0x00 at address 0x0B failed: " + kNack);
}

TEST(FailingBus, TooShortForTheIdentificationRequests) {
  testing::PanelBench bench;
  testing::EmulatedBusHost bus(bench.sim, testing::EmulatedBusKind::SmbusOnly);
  bench.panel.UserControl_Show();
  EXPECT_TRUE(testing::MatchesTrace(bench.Trace(), "hosts/start-up-smbus-only-bus"));
  ASSERT_EQ(bus.Failures().size(), 4U);
  EXPECT_EQ(bus.Failures()[1], std::string(testing::EmulatedBusHost::kPath) +
                                   ": WriteSMBusBlock of 0x20 at address 0x0B failed: a block of "
                                   "62 bytes needs plain I2C transfers (I2C_FUNC_I2C), which the "
                                   "bus lacks; nothing was sent.");
  // Nothing of the refused requests reached the gauge: only the two word reads and the
  // unanswered block read went over the bus.
  EXPECT_EQ(bus.Adapter().Transfers(), 3U);
}

// The voltage and temperature calibration on MORLIN with the k-th transfer of its press failing,
// for every k: the press ends, the host tells of the failure, and the dataflash is as it was
// unless the panel verified what it wrote (its done-mark shows) or said why not in a box.
TEST(FailingBus, TransferFailingMidCalibration) {
  constexpr std::size_t kDataflash = 0x4000;
  const auto press = [](std::uint64_t failing) {
    struct Outcome {
      sim::Bytes before, after;
      std::uint64_t transfers;
      std::size_t failures;
      bool toldOf;  // the done-mark or a box showed
    } outcome;
    testing::PanelBench bench;
    testing::EmulatedBusHost bus(bench.sim);
    bench.ReadyToCalibrate();
    outcome.before = bench.sim.gauge->DataflashBytes(0, kDataflash);
    const std::uint64_t start = bus.Adapter().Transfers();
    bus.Adapter().FailTransfer(static_cast<int>(failing));
    bench.panel.btnCalibrate_Click();
    outcome.after = bench.sim.gauge->DataflashBytes(0, kDataflash);
    outcome.transfers = bus.Adapter().Transfers() - start;
    outcome.failures = bus.Failures().size();
    outcome.toldOf = bench.panel.imgCalDoneBox.Visible || !bench.sim.MessageTexts().empty();
    return outcome;
  };
  const auto clean = press(0);
  ASSERT_NE(clean.after, clean.before);
  ASSERT_EQ(clean.failures, 0U);
  for (std::uint64_t k = 1; k <= clean.transfers; ++k) {
    const auto failed = press(k);
    EXPECT_GE(failed.failures, 1U) << k;
    EXPECT_TRUE(failed.after == failed.before || failed.toldOf) << k;
  }
}

}  // namespace
}  // namespace ombrelay
