// The I2C_SMBUS ioctl, through libi2c and raw, as a program on the emulated bus sees it.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "sim/keld_dataflash.h"
#include "tests/i2c_emulation/emulated_bus.h"

extern "C" {
#include <i2c/smbus.h>
}

namespace ombrelay::i2c_emulation {
namespace {

constexpr std::uint8_t kVoltage = sim::MeasurementReports::kCellVoltage1;
constexpr std::uint8_t kIdentificationRequest = sim::Identification::kRequestCommand;
constexpr std::uint8_t kKeldCalibrationBlock = sim::KeldDataflash::kCalibrationBlockCommand;

int SmbusBlockWrite(int fd, std::uint8_t command, std::uint8_t count) {
  i2c_smbus_data data{};
  data.block[0] = count;
  i2c_smbus_ioctl_data request{I2C_SMBUS_WRITE, command, I2C_SMBUS_BLOCK_DATA, &data};
  return ::ioctl(fd, I2C_SMBUS, &request) < 0 ? -errno : 0;
}

TEST(SmbusIoctl, BlocksBeyondTheSmbusLimitNeverReachTheBus) {
  EmulatedBus bus(sim::Family::Keld);
  for (const std::uint8_t count : {0, 33}) {
    EXPECT_EQ(SmbusBlockWrite(bus.fd, kKeldCalibrationBlock, count), -EINVAL) << int{count};
  }
  EXPECT_EQ(bus.adapter->Transfers(), 0u);

  // KELD answers its calibration block with 64 bytes.
  std::array<std::uint8_t, I2C_SMBUS_BLOCK_MAX> block{};
  EXPECT_EQ(i2c_smbus_read_block_data(bus.fd, kKeldCalibrationBlock, block.data()), -EPROTO);
  EXPECT_EQ(block, decltype(block){});
}

TEST(SmbusIoctl, NothingAnswersAnotherAddressAnUnknownCommandOrAnEmptyBus) {
  EmulatedBus bus;
  EXPECT_EQ(i2c_smbus_read_word_data(bus.fd, 0xEE), -ENXIO);
  ASSERT_EQ(::ioctl(bus.fd, I2C_SLAVE, kGaugeAddress + 1), 0);
  EXPECT_EQ(i2c_smbus_read_word_data(bus.fd, kVoltage), -ENXIO);
  EXPECT_EQ(i2c_smbus_write_quick(bus.fd, I2C_SMBUS_WRITE), -ENXIO);
  ASSERT_EQ(::ioctl(bus.fd, I2C_SLAVE, kGaugeAddress), 0);
  EXPECT_EQ(i2c_smbus_write_quick(bus.fd, I2C_SMBUS_WRITE), 0);

  EmulatedBus empty(sim::Family::Morlin, {}, false);
  EXPECT_EQ(i2c_smbus_write_quick(empty.fd, I2C_SMBUS_WRITE), -ENXIO);
  EXPECT_EQ(i2c_smbus_read_word_data(empty.fd, kVoltage), -ENXIO);
}

TEST(SmbusIoctl, RefusesWhatTheKernelDoesNotKnow) {
  EmulatedBus bus;
  i2c_smbus_data data{};
  i2c_smbus_ioctl_data unknownSize{I2C_SMBUS_READ, kVoltage, 9, &data};
  i2c_smbus_ioctl_data unknownDirection{2, kVoltage, I2C_SMBUS_WORD_DATA, &data};
  i2c_smbus_ioctl_data noData{I2C_SMBUS_READ, kVoltage, I2C_SMBUS_WORD_DATA, nullptr};
  struct Case {
    unsigned long request;
    void* argument;
    int error;
  };
  for (const Case& asked :
       {Case{I2C_SMBUS, &unknownSize, EINVAL}, Case{I2C_SMBUS, &unknownDirection, EINVAL},
        Case{I2C_SMBUS, &noData, EINVAL}, Case{I2C_SLAVE, reinterpret_cast<void*>(0x80), EINVAL},
        Case{I2C_TENBIT, reinterpret_cast<void*>(1), EINVAL}, Case{0x0799, nullptr, ENOTTY}}) {
    errno = 0;
    EXPECT_EQ(::ioctl(bus.fd, asked.request, asked.argument), -1) << asked.request;
    EXPECT_EQ(errno, asked.error) << asked.request;
  }
}

TEST(SmbusIoctl, AdaptersOfferAndDoWhatTheirTraitsAllow) {
  constexpr unsigned long kFull =
      I2C_FUNC_I2C | I2C_FUNC_SMBUS_EMUL | I2C_FUNC_SMBUS_READ_BLOCK_DATA | I2C_FUNC_SMBUS_PEC;
  struct Case {
    AdapterTraits traits;
    unsigned long functions;
    bool blockReads;
    bool pec;
  };
  for (const Case& adapter :
       {Case{{}, kFull, true, true},
        Case{Without(&AdapterTraits::smbusBlockRead), kFull & ~I2C_FUNC_SMBUS_READ_BLOCK_DATA,
             false, true},
        Case{Without(&AdapterTraits::plainI2c), kFull & ~I2C_FUNC_I2C, true, true},
        Case{Without(&AdapterTraits::pec), kFull & ~I2C_FUNC_SMBUS_PEC, true, false}}) {
    EmulatedBus bus(sim::Family::Morlin, adapter.traits);
    unsigned long functions = 0;
    ASSERT_EQ(::ioctl(bus.fd, I2C_FUNCS, &functions), 0);
    EXPECT_EQ(functions, adapter.functions);

    // Asked for on every bus, PEC is used where the adapter has it.
    ASSERT_EQ(::ioctl(bus.fd, I2C_PEC, 1L), 0);
    const std::uint16_t word = bus.gauge->ReadWord(kVoltage).value();
    EXPECT_EQ(i2c_smbus_read_word_data(bus.fd, kVoltage), word);
    // A byte read of a word register takes the word's high byte for its PEC.
    EXPECT_EQ(i2c_smbus_read_byte_data(bus.fd, kVoltage), adapter.pec ? -EBADMSG : word & 0xFF);
    EXPECT_EQ(i2c_smbus_write_word_data(bus.fd, sim::Gauge::kManufacturerAccessCommand, 0x1234), 0);
    EXPECT_EQ(bus.gauge->ManufacturerAccessWord(), 0x1234);

    const std::array<std::uint8_t, 1> request{0};
    ASSERT_EQ(i2c_smbus_write_block_data(bus.fd, kIdentificationRequest, 1, request.data()), 0);
    std::array<std::uint8_t, I2C_SMBUS_BLOCK_MAX> block{};
    const sim::Bytes& identification = bus.gauge->IdentificationBlock();
    EXPECT_EQ(i2c_smbus_read_block_data(bus.fd, sim::Gauge::kSharedDataCommand, block.data()),
              adapter.blockReads ? static_cast<int>(identification.size()) : -EOPNOTSUPP);
    EXPECT_EQ(std::equal(identification.begin(), identification.end(), block.begin()),
              adapter.blockReads);
  }
}

}  // namespace
}  // namespace ombrelay::i2c_emulation
