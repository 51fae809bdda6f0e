// The real host on buses that fail it: a bus that is missing, forbidden or no I2C bus, one that
// cannot carry what an operation needs, a gauge that does not answer, and a transfer that fails
// mid-calibration. Each gives a clear sentence, leaves one pending error per failed transfer, and
// writes nothing it should not; none hangs.

#include "hosts/i2c_dev_host.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "i2c_emulation/device_table.h"
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
