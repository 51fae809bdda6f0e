// The real i2c-dev host on the emulated bus: its libi2c and I2C_RDWR paths through the
// interposed system calls, on each kind of adapter.

#include <gtest/gtest.h>

#include <array>
#include <numeric>
#include <string>

#include "hosts/i2c_dev_host.h"
#include "sim/keld_dataflash.h"
#include "tests/i2c_emulation/emulated_bus.h"

namespace ombrelay::i2c_emulation {
namespace {

constexpr std::int16_t kAddress = 0x16;
constexpr std::int32_t kKeldCalibrationBlock = sim::KeldDataflash::kCalibrationBlockCommand;

TEST(HostOverEmulation, CarriesWordsAndKeldsLongBlockWhereTheAdapterCan) {
  struct Case {
    AdapterTraits traits;
    bool pec;
    Status write;
    Status read;
  };
  for (const Case& adapter : {Case{{}, false, 0, 0}, Case{{}, true, 0, 0},
                              Case{Without(&AdapterTraits::smbusBlockRead), true, 0, 0},
                              Case{Without(&AdapterTraits::plainI2c), true, EOPNOTSUPP, EPROTO}}) {
    EmulatedBus bus(sim::Family::Keld, adapter.traits);
    I2cDevHost::Options options;
    options.pec = adapter.pec;
    std::string error;
    const auto host = I2cDevHost::Open(kEmulatedPath, options, error);
    ASSERT_TRUE(host) << error;

    std::int16_t word = 0;
    EXPECT_EQ(host->ReadSMBusWord_(sim::MeasurementReports::kCellVoltage1, word, kAddress), 0);
    EXPECT_EQ(static_cast<std::uint16_t>(word),
              bus.gauge->ReadWord(sim::MeasurementReports::kCellVoltage1).value());

    std::array<std::uint8_t, 64> block{};
    std::iota(block.begin(), block.end(), std::uint8_t{0x40});
    EXPECT_EQ(host->WriteSMBusBlock(kKeldCalibrationBlock, block, 64, kAddress), adapter.write);
    EXPECT_EQ(bus.gauge->DataflashBytes(0, 64) == sim::Bytes(block.begin(), block.end()),
              adapter.write == 0);
    std::array<std::uint8_t, 64> back{};
    std::int16_t length = 0;
    EXPECT_EQ(host->ReadSMBusBlock_(kKeldCalibrationBlock, back, length, kAddress), adapter.read);
    EXPECT_EQ(back == block, adapter.read == 0);
  }
}

}  // namespace
}  // namespace ombrelay::i2c_emulation
