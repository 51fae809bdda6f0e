// The interposed open, ioctl and close: emulated device nodes, and every other file untouched.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <string>

#include "tests/i2c_emulation/emulated_bus.h"

extern "C" {
#include <i2c/smbus.h>
}

namespace ombrelay::i2c_emulation {
namespace {

constexpr std::uint8_t kVoltage = sim::MeasurementReports::kCellVoltage1;

TEST(DeviceTable, DeniedAndUnregisteredNodesFailAsTheSystemWould) {
  RegisteredDevice denied("/dev/i2c-71", nullptr, {.deny = true});
  errno = 0;
  EXPECT_EQ(::open("/dev/i2c-71", O_RDWR), -1);
  EXPECT_EQ(errno, EACCES);
  EXPECT_EQ(::open("/dev/i2c-72", O_RDWR), -1);
  EXPECT_EQ(errno, ENOENT);
}

TEST(DeviceTable, OrdinaryFilesPassThroughUntouched) {
  const std::string path = ::testing::TempDir() + "ombrelay-i2c-emulation-file";
  const int fd = ::openat(AT_FDCWD, path.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0640);
  ASSERT_GE(fd, 0);
  ASSERT_EQ(::write(fd, "gauge", 5), 5);
  ASSERT_EQ(::lseek(fd, 0, SEEK_SET), 0);
  int waiting = 0;
  EXPECT_EQ(::ioctl(fd, FIONREAD, &waiting), 0);
  EXPECT_EQ(waiting, 5);
  std::array<char, 5> text{};
  EXPECT_EQ(::read(fd, text.data(), text.size()), 5);
  EXPECT_EQ(std::string(text.data(), text.size()), "gauge");
  struct stat status {};
  ASSERT_EQ(::fstat(fd, &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0640u);
  EXPECT_EQ(::close(fd), 0);
  std::remove(path.c_str());
}

TEST(DeviceTable, EachOpenFileKeepsItsOwnAddressUntilClosed) {
  EmulatedBus bus;
  const int other = ::openat(AT_FDCWD, kEmulatedPath, O_RDWR);
  ASSERT_GE(other, 0);
  ASSERT_EQ(::ioctl(other, I2C_SLAVE, kGaugeAddress + 1), 0);
  EXPECT_EQ(i2c_smbus_read_word_data(other, kVoltage), -ENXIO);
  EXPECT_GE(i2c_smbus_read_word_data(bus.fd, kVoltage), 0);
  ASSERT_EQ(::close(other), 0);
  unsigned long functions = 0;
  EXPECT_EQ(::ioctl(other, I2C_FUNCS, &functions), -1);
  EXPECT_EQ(errno, EBADF);
}

TEST(DeviceTable, TheAdapterFailsTheTransferItIsToldToAndCountsThemAll) {
  EmulatedBus bus;
  bus.adapter->FailTransfer(3);
  for (const bool fails : {false, false, true, false}) {
    const int word = i2c_smbus_read_word_data(bus.fd, kVoltage);
    EXPECT_EQ(word, fails ? -ENXIO : bus.gauge->ReadWord(kVoltage).value());
  }
  EXPECT_EQ(bus.adapter->Transfers(), 4u);
}

}  // namespace
}  // namespace ombrelay::i2c_emulation
