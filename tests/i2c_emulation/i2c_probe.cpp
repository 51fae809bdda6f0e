// Reads a gauge's voltage through a /dev/i2c-N node as any program would, for the tests that run
// it under the preloaded emulation. Prints the bus's functions and a cell's voltage, or what
// failed.

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>

extern "C" {
#include <i2c/smbus.h>
}

// The voltage of the first cell, a word every family answers.
constexpr std::uint8_t kCellVoltage1 = 0x3F;

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s /dev/i2c-N\n", argv[0]);
    return 2;
  }
  const int fd = ::open(argv[1], O_RDWR);
  if (fd < 0) {
    std::printf("open: %s\n", std::strerror(errno));
    return 0;
  }
  unsigned long functions = 0;
  if (::ioctl(fd, I2C_FUNCS, &functions) < 0 || ::ioctl(fd, I2C_SLAVE, 0x0B) < 0) {
    std::printf("ioctl: %s\n", std::strerror(errno));
    return 1;
  }
  const int voltage = i2c_smbus_read_word_data(fd, kCellVoltage1);
  if (voltage < 0) {
    std::printf("functions 0x%08lx voltage: %s\n", functions, std::strerror(-voltage));
  } else {
    std::printf("functions 0x%08lx voltage %d mV\n", functions, voltage);
  }
  ::close(fd);
  return 0;
}
