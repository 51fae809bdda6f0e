#include "hosts/i2c_dev_host.h"

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <system_error>
#include <thread>
#include <utility>

#include "hosts/smbus_pec.h"

extern "C" {
#include <i2c/smbus.h>
}

namespace ombrelay {
namespace {

constexpr std::size_t kSmbusBlockMax = I2C_SMBUS_BLOCK_MAX;
// The count byte of a block reaches 255.
constexpr std::size_t kLargestBlock = 255;
constexpr std::int32_t kLargestCommand = 255;
constexpr std::int16_t kLargestAddress = 255;
// The 7-bit addresses a device may have; the others are reserved.
constexpr int kFirstDeviceAddress = 0x08;
constexpr int kLastDeviceAddress = 0x77;

std::string HexByte(int value) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "0x%02X", value & 0xFF);
  return text.data();
}

std::string Describe(int error) {
  return std::generic_category().message(error);
}

// What the user can do about a transfer that failed with error, where there is something.
std::string Advice(int error) {
  switch (error) {
    case ENXIO:
    case EREMOTEIO:
      return " Nothing acknowledged: is the gauge connected, powered and at this address?";
    case ETIMEDOUT:
    case EAGAIN:
      return " The bus was held or timed out: check the wiring and the pull-ups.";
    case EBADMSG:
      return " The packet error code did not match: noise on the bus, or a gauge without PEC.";
    default:
      return "";
  }
}

std::string OpenFailure(const std::string& path, int error) {
  switch (error) {
    case ENOENT:
    case ENODEV:
    case ENXIO:
      return path +
             " does not exist. Plug the adapter in and load the i2c-dev module (sudo modprobe "
             "i2c-dev); ombrelay --list-buses lists the buses present.";
    case EACCES:
    case EPERM:
      return "Permission denied opening " + path +
             ". Add your user to the i2c group (sudo usermod -aG i2c $USER) and log in again.";
    default:
      return "Cannot open " + path + ": " + Describe(error) + ".";
  }
}

std::uint8_t WriteAddress(int address) {
  return static_cast<std::uint8_t>(address << 1);
}
std::uint8_t ReadAddress(int address) {
  return static_cast<std::uint8_t>(address << 1 | 1);
}

i2c_msg Message(int address, std::uint16_t flags, std::span<std::uint8_t> bytes) {
  return {static_cast<std::uint16_t>(address), flags, static_cast<std::uint16_t>(bytes.size()),
          bytes.data()};
}

void DefaultSleep(std::int32_t milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace

std::unique_ptr<I2cDevHost> I2cDevHost::Open(const std::string& path, Options options,
                                             std::string& error) {
  const int fd = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
  if (fd < 0) {
    error = OpenFailure(path, errno);
    return nullptr;
  }
  unsigned long functions = 0;
  if (::ioctl(fd, I2C_FUNCS, &functions) < 0) {
    error = path + " is no I2C bus: it does not tell what it can do (" + Describe(errno) + ").";
    ::close(fd);
    return nullptr;
  }
  if (options.pec && ((functions & I2C_FUNC_SMBUS_PEC) == 0 || ::ioctl(fd, I2C_PEC, 1L) < 0)) {
    error = path + " cannot check packets: it lacks I2C_FUNC_SMBUS_PEC.";
    ::close(fd);
    return nullptr;
  }
  if (!options.sleep) options.sleep = DefaultSleep;
  return std::unique_ptr<I2cDevHost>(new I2cDevHost(fd, path, functions, std::move(options)));
}

I2cDevHost::I2cDevHost(int fd, std::string path, unsigned long functions, Options options)
    : fd_(fd), path_(std::move(path)), functions_(functions), options_(std::move(options)) {}

I2cDevHost::~I2cDevHost() {
  ::close(fd_);
}

Status I2cDevHost::Fail(const Call& call, int error, const std::string& why) {
  pending_.push_back(error);
  if (onFailure) {
    onFailure(path_ + ": " + call.operation + " of " + HexByte(call.command) + " at address " +
              HexByte((call.address & 0xFF) >> 1) +
              " failed: " + (why.empty() ? Describe(error) : why) + "." + Advice(error));
  }
  return error;
}

Status I2cDevHost::Begin(const Call& call, int& address) {
  address = call.address >> 1;
  // The general call and the other reserved addresses never go on the bus: a device there might
  // take the transfer as meant for it.
  if (call.command >= 0 && call.command <= kLargestCommand && call.address >= 0 &&
      call.address <= kLargestAddress && address >= kFirstDeviceAddress &&
      address <= kLastDeviceAddress) [[likely]] {
    return 0;
  }
  return Refuse(call);
}

Status I2cDevHost::Refuse(const Call& call) {
  if (call.command < 0 || call.command > kLargestCommand) {
    return Fail(call, EINVAL, "command " + std::to_string(call.command) + " is no SMBus command");
  }
  return Fail(call, EINVAL,
              "address " + std::to_string(call.address) +
                  " is no device's SMBus address; nothing was sent");
}

Status I2cDevHost::Select(const Call& call, int address) {
  if (selected_ == address) [[likely]] {
    return 0;
  }
  return Reselect(call, address);
}

Status I2cDevHost::Reselect(const Call& call, int address) {
  if (::ioctl(fd_, I2C_SLAVE, static_cast<long>(address)) < 0) {
    const int error = errno;
    return Fail(call, error,
                error == EBUSY ? "a kernel driver holds address " + HexByte(address) +
                                     " on this bus; unbind it first (see /sys/bus/i2c/devices)"
                               : std::string());
  }
  selected_ = address;
  return 0;
}

Status I2cDevHost::Combined(const Call& call, std::span<i2c_msg> messages) {
  i2c_rdwr_ioctl_data transfer{messages.data(), static_cast<std::uint32_t>(messages.size())};
  if (::ioctl(fd_, I2C_RDWR, &transfer) < 0) return Fail(call, errno);
  return 0;
}

Status I2cDevHost::CheckReadPec(const Call& call, int address, std::span<const std::uint8_t> answer,
                                std::uint8_t pec) {
  const std::array<std::uint8_t, 3> head = {
      WriteAddress(address), static_cast<std::uint8_t>(call.command), ReadAddress(address)};
  if (SmbusPec(answer, SmbusPec(head)) == pec) return 0;
  return Fail(call, EBADMSG);
}

Status I2cDevHost::ReadBlock(const Call& call, std::span<std::uint8_t> data, std::size_t& length) {
  length = 0;
  int address = 0;
  if (const Status status = Begin(call, address); status != 0) return status;
  const std::size_t longest = std::min(data.size(), kLargestBlock);
  // Only what the bus filled is looked at: the count, the block within it, and its PEC.
  std::array<std::uint8_t, kLargestBlock + 2> answer;
  std::size_t count = 0;
  if (Can(I2C_FUNC_I2C)) {
    std::uint8_t command = static_cast<std::uint8_t>(call.command);
    const std::size_t wanted = 1 + longest + (options_.pec ? 1 : 0);
    std::array messages = {Message(address, 0, {&command, 1}),
                           Message(address, I2C_M_RD, std::span(answer).first(wanted))};
    if (const Status status = Combined(call, messages); status != 0) return status;
    count = answer[0];
    if (count <= longest && options_.pec) {
      const Status status =
          CheckReadPec(call, address, std::span(answer).first(1 + count), answer[1 + count]);
      if (status != 0) return status;
    }
  } else if (Can(I2C_FUNC_SMBUS_READ_BLOCK_DATA)) {
    if (const Status status = Select(call, address); status != 0) return status;
    const int read =
        i2c_smbus_read_block_data(fd_, static_cast<std::uint8_t>(call.command), answer.data() + 1);
    if (read < 0) return Fail(call, -read);
    count = static_cast<std::size_t>(read);
  } else {
    return Fail(call, EOPNOTSUPP,
                "the bus has neither plain I2C transfers (I2C_FUNC_I2C) nor SMBus block reads "
                "(I2C_FUNC_SMBUS_READ_BLOCK_DATA)");
  }
  if (count > longest) {
    return Fail(call, EMSGSIZE,
                "the gauge answered " + std::to_string(count) + " bytes where " +
                    std::to_string(data.size()) + " fit");
  }
  std::copy_n(answer.begin() + 1, count, data.begin());
  length = count;
  return 0;
}

// Words are SMBus transfers only: the kernel carries them on every adapter that has plain I2C as
// well, so a bus without them has no other way either.
Status I2cDevHost::ReadWord(const Call& call, std::uint16_t& word) {
  int address = 0;
  if (const Status status = Begin(call, address); status != 0) return status;
  if (!Can(I2C_FUNC_SMBUS_READ_WORD_DATA)) {
    return Fail(call, EOPNOTSUPP, "the bus lacks SMBus word reads (I2C_FUNC_SMBUS_READ_WORD_DATA)");
  }
  if (const Status status = Select(call, address); status != 0) return status;
  const int read = i2c_smbus_read_word_data(fd_, static_cast<std::uint8_t>(call.command));
  if (read < 0) return Fail(call, -read);
  word = static_cast<std::uint16_t>(read);
  return 0;
}

Status I2cDevHost::WriteWord(const Call& call, std::uint16_t word) {
  int address = 0;
  if (const Status status = Begin(call, address); status != 0) return status;
  if (!Can(I2C_FUNC_SMBUS_WRITE_WORD_DATA)) {
    return Fail(call, EOPNOTSUPP,
                "the bus lacks SMBus word writes (I2C_FUNC_SMBUS_WRITE_WORD_DATA)");
  }
  if (const Status status = Select(call, address); status != 0) return status;
  const int written = i2c_smbus_write_word_data(fd_, static_cast<std::uint8_t>(call.command), word);
  return written < 0 ? Fail(call, -written) : 0;
}

Status I2cDevHost::ReadSMBusBlock_(std::int32_t command, std::span<std::uint8_t> data,
                                   std::int16_t& length, std::int16_t address) {
  std::size_t count = 0;
  const Status status = ReadBlock({"ReadSMBusBlock_", command, address}, data, count);
  length = static_cast<std::int16_t>(count);
  return status;
}

Status I2cDevHost::ReadSMBusBlock(std::int32_t command, std::string& text, std::int16_t address) {
  std::array<std::uint8_t, kLargestBlock> data{};
  std::size_t count = 0;
  const Status status = ReadBlock({"ReadSMBusBlock", command, address}, data, count);
  text.assign(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(count));
  return status;
}

Status I2cDevHost::WriteSMBusBlock(std::int32_t command, std::span<const std::uint8_t> data,
                                   std::int16_t length, std::int16_t address) {
  const Call call = {"WriteSMBusBlock", command, address};
  if (length < 0 || static_cast<std::size_t>(length) > std::min(data.size(), kLargestBlock)) {
    return Fail(call, EINVAL, "a block of " + std::to_string(length) + " bytes cannot go out");
  }
  int target = 0;
  if (const Status status = Begin(call, target); status != 0) return status;
  const auto block = data.first(static_cast<std::size_t>(length));
  const auto code = static_cast<std::uint8_t>(command);
  if (!block.empty() && block.size() <= kSmbusBlockMax && Can(I2C_FUNC_SMBUS_WRITE_BLOCK_DATA)) {
    if (const Status status = Select(call, target); status != 0) return status;
    const int written =
        i2c_smbus_write_block_data(fd_, code, static_cast<std::uint8_t>(length), block.data());
    return written < 0 ? Fail(call, -written) : 0;
  }
  if (!Can(I2C_FUNC_I2C)) {
    return Fail(call, EOPNOTSUPP,
                "a block of " + std::to_string(length) +
                    " bytes needs plain I2C transfers (I2C_FUNC_I2C), which the bus lacks; "
                    "nothing was sent");
  }
  // The command, the count, the block and room for its PEC.
  std::array<std::uint8_t, kLargestBlock + 3> frame;
  frame[0] = code;
  frame[1] = static_cast<std::uint8_t>(length);
  std::ranges::copy(block, frame.begin() + 2);
  std::size_t size = block.size() + 2;
  if (options_.pec) {
    const std::array<std::uint8_t, 1> head = {WriteAddress(target)};
    frame[size] = SmbusPec(std::span(frame).first(size), SmbusPec(head));
    ++size;
  }
  std::array messages = {Message(target, 0, std::span(frame).first(size))};
  return Combined(call, messages);
}

Status I2cDevHost::ReadSMBusWord(std::int32_t command, std::uint8_t& high, std::uint8_t& low,
                                 std::int16_t address) {
  std::uint16_t word = 0;
  const Status status = ReadWord({"ReadSMBusWord", command, address}, word);
  if (status == 0) {
    high = static_cast<std::uint8_t>(word >> 8);
    low = static_cast<std::uint8_t>(word & 0xFF);
  }
  return status;
}

Status I2cDevHost::ReadSMBusWord_(std::int32_t command, std::int16_t& word, std::int16_t address) {
  std::uint16_t pattern = 0;
  const Status status = ReadWord({"ReadSMBusWord_", command, address}, pattern);
  if (status == 0) word = static_cast<std::int16_t>(pattern);
  return status;
}

Status I2cDevHost::WriteSMBusWord(std::int32_t command, std::uint8_t high, std::uint8_t low,
                                  std::int16_t address) {
  return WriteWord({"WriteSMBusWord", command, address},
                   static_cast<std::uint16_t>(high << 8 | low));
}

Status I2cDevHost::WriteSMBusWord_(std::int32_t command, std::int16_t word, std::int16_t address) {
  return WriteWord({"WriteSMBusWord_", command, address}, static_cast<std::uint16_t>(word));
}

std::int32_t I2cDevHost::CheckForError() {
  if (pending_.empty()) return 0;
  const std::int32_t error = pending_.front();
  pending_.pop_front();
  return error;
}

void I2cDevHost::Delay(std::int16_t count) {
  if (count > 0) options_.sleep(count);
}

}  // namespace ombrelay
