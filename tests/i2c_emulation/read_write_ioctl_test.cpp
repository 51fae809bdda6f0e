// The I2C_RDWR ioctl on the emulated bus: messages as the gauge takes them, and i2c-dev's rules.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <vector>

#include "hosts/smbus_pec.h"
#include "sim/keld_dataflash.h"
#include "tests/i2c_emulation/emulated_bus.h"

namespace ombrelay::i2c_emulation {
namespace {

constexpr std::uint8_t kKeldCalibrationBlock = sim::KeldDataflash::kCalibrationBlockCommand;
constexpr std::uint8_t kVoltage = sim::MeasurementReports::kCellVoltage1;
constexpr std::uint8_t kWriteAddress = kGaugeAddress << 1;
constexpr std::uint8_t kReadAddress = kGaugeAddress << 1 | 1;

i2c_msg Message(std::span<std::uint8_t> bytes, std::uint16_t flags = 0,
                std::uint16_t address = kGaugeAddress) {
  return {address, flags, static_cast<std::uint16_t>(bytes.size()), bytes.data()};
}

// The ioctl's result, or -errno.
int ReadWrite(int fd, std::vector<i2c_msg> messages) {
  i2c_rdwr_ioctl_data request{messages.data(), static_cast<std::uint32_t>(messages.size())};
  const int result = ::ioctl(fd, I2C_RDWR, &request);
  return result < 0 ? -errno : result;
}

std::uint8_t Pec(std::initializer_list<std::uint8_t> bytes) {
  return SmbusPec(std::span(bytes.begin(), bytes.size()));
}

// The PEC the gauge sends after answering a read of command.
std::uint8_t ReadPec(std::uint8_t command, std::span<const std::uint8_t> answer) {
  return SmbusPec(answer, Pec({kWriteAddress, command, kReadAddress}));
}

// Asks for the identification block, which the shared data command then answers.
void RequestIdentification(int fd) {
  std::array<std::uint8_t, 3> request{sim::Identification::kRequestCommand, 1, 0};
  ASSERT_EQ(ReadWrite(fd, {Message(request)}), 1);
}

TEST(ReadWriteIoctl, LongBlocksGoThroughWholeAndComeBackWithTheirPec) {
  EmulatedBus bus(sim::Family::Keld);
  std::vector<std::uint8_t> write{kKeldCalibrationBlock, 64};
  for (int i = 0; i < 64; ++i)
    write.push_back(static_cast<std::uint8_t>(i * 7));
  ASSERT_EQ(ReadWrite(bus.fd, {Message(write)}), 1);
  const sim::Bytes block(write.begin() + 2, write.end());
  EXPECT_EQ(bus.gauge->DataflashBytes(0, 64), block);

  std::array<std::uint8_t, 1> command{kKeldCalibrationBlock};
  std::array<std::uint8_t, 1 + 64 + 1 + 2> answer{};
  ASSERT_EQ(ReadWrite(bus.fd, {Message(command), Message(answer, I2C_M_RD)}), 2);
  EXPECT_EQ(answer[0], 64);
  EXPECT_TRUE(std::equal(block.begin(), block.end(), answer.begin() + 1));
  EXPECT_EQ(answer[65], ReadPec(kKeldCalibrationBlock, std::span(answer).first(65)));
  EXPECT_EQ(answer[66], 0xFF);
  EXPECT_EQ(answer[67], 0xFF);
}

TEST(ReadWriteIoctl, AWriteIsTakenOnlyWithItsRightPec) {
  constexpr std::uint8_t kAccess = sim::Gauge::kManufacturerAccessCommand;
  const std::uint8_t right = Pec({kWriteAddress, kAccess, 0x34, 0x12});
  for (const std::uint8_t pec : {right, static_cast<std::uint8_t>(right ^ 0x01)}) {
    EmulatedBus bus;
    std::array<std::uint8_t, 4> write{kAccess, 0x34, 0x12, pec};
    EXPECT_EQ(ReadWrite(bus.fd, {Message(write)}), pec == right ? 1 : -ENXIO);
    EXPECT_EQ(bus.gauge->ManufacturerAccessWord() == 0x1234, pec == right);
  }
}

TEST(ReadWriteIoctl, NothingOfATransferWithAMessageToAnotherAddressHappens) {
  EmulatedBus bus;
  std::array<std::uint8_t, 3> write{sim::Gauge::kManufacturerAccessCommand, 0x34, 0x12};
  EXPECT_EQ(ReadWrite(bus.fd, {Message(write), Message(write, 0, kGaugeAddress + 1)}), -ENXIO);
  EXPECT_NE(bus.gauge->ManufacturerAccessWord(), 0x1234);
}

TEST(ReadWriteIoctl, ReadsThatTakeTheirLengthFromTheGaugeFollowI2cDevsRules) {
  constexpr std::uint8_t kUntouched = 0xAA;
  struct Case {
    std::uint16_t flags;
    std::uint16_t length;
    std::uint8_t extra;  // the bytes asked for besides the block: the count, and the PEC
    int result;
  };
  for (const Case& read :
       {Case{I2C_M_RECV_LEN, 40, 1, -EINVAL}, Case{I2C_M_RD | I2C_M_RECV_LEN, 0, 1, -EINVAL},
        Case{I2C_M_RD | I2C_M_RECV_LEN, 40, 0, -EINVAL},
        Case{I2C_M_RD | I2C_M_RECV_LEN, 33, 2, -EINVAL}, Case{I2C_M_RD | I2C_M_RECV_LEN, 33, 1, 2},
        Case{I2C_M_RD | I2C_M_RECV_LEN, 40, 2, 2}}) {
    EmulatedBus bus;
    RequestIdentification(bus.fd);
    std::array<std::uint8_t, 1> command{sim::Gauge::kSharedDataCommand};
    std::vector<std::uint8_t> answer(read.length, kUntouched);
    if (!answer.empty()) answer[0] = read.extra;
    const i2c_msg reply{kGaugeAddress, read.flags, read.length, answer.data()};
    ASSERT_EQ(ReadWrite(bus.fd, {Message(command), reply}), read.result);
    if (read.result < 0) continue;
    const sim::Bytes& block = bus.gauge->IdentificationBlock();
    const std::size_t received = read.extra + block.size();
    EXPECT_EQ(answer[0], block.size());
    EXPECT_TRUE(std::equal(block.begin(), block.end(), answer.begin() + 1));
    if (read.extra == 2) {
      EXPECT_EQ(answer[1 + block.size()],
                ReadPec(sim::Gauge::kSharedDataCommand, std::span(answer).first(1 + block.size())));
    }
    EXPECT_TRUE(std::all_of(answer.begin() + received, answer.end(),
                            [](std::uint8_t byte) { return byte == kUntouched; }));
  }
}

TEST(ReadWriteIoctl, ALengthFromTheGaugeBeyondTheSmbusLimitIsAProtocolError) {
  EmulatedBus bus(sim::Family::Keld);
  std::array<std::uint8_t, 1> command{kKeldCalibrationBlock};
  std::array<std::uint8_t, 40> answer{1};
  EXPECT_EQ(ReadWrite(bus.fd, {Message(command), Message(answer, I2C_M_RD | I2C_M_RECV_LEN)}),
            -EPROTO);
  EXPECT_EQ(answer[0], 1);
}

TEST(ReadWriteIoctl, TransfersBeyondI2cDevsLimitsNeverReachTheBus) {
  EmulatedBus bus;
  std::vector<std::uint8_t> tooLong(8193);
  std::array<std::uint8_t, 1> command{kVoltage};
  EXPECT_EQ(ReadWrite(bus.fd, {}), -EINVAL);
  EXPECT_EQ(ReadWrite(bus.fd, {Message(tooLong)}), -EINVAL);
  EXPECT_EQ(ReadWrite(bus.fd, std::vector(I2C_RDWR_IOCTL_MAX_MSGS + 1, Message(command))), -EINVAL);
  EXPECT_EQ(bus.adapter->Transfers(), 0u);
}

TEST(ReadWriteIoctl, BusesWithoutThemRefusePlainI2cOrLengthsFromTheGauge) {
  std::array<std::uint8_t, 1> command{kVoltage};
  std::array<std::uint8_t, 34> answer{1};
  EmulatedBus smbusOnly(sim::Family::Morlin, Without(&AdapterTraits::plainI2c));
  EXPECT_EQ(ReadWrite(smbusOnly.fd, {Message(command), Message(answer, I2C_M_RD)}), -EOPNOTSUPP);

  EmulatedBus noBlockRead(sim::Family::Morlin, Without(&AdapterTraits::smbusBlockRead));
  EXPECT_EQ(
      ReadWrite(noBlockRead.fd, {Message(command), Message(answer, I2C_M_RD | I2C_M_RECV_LEN)}),
      -EOPNOTSUPP);
  EXPECT_EQ(ReadWrite(noBlockRead.fd, {Message(command), Message(answer, I2C_M_RD)}), 2);
  const std::uint16_t voltage = noBlockRead.gauge->ReadWord(kVoltage).value();
  EXPECT_EQ(answer[0] | answer[1] << 8, voltage);
}

}  // namespace
}  // namespace ombrelay::i2c_emulation
