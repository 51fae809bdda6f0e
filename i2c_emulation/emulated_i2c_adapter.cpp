#include "i2c_emulation/emulated_i2c_adapter.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <vector>

#include "i2c_emulation/smbus_transfer.h"

namespace ombrelay::i2c_emulation {
namespace {

constexpr unsigned long kLargestSevenBitAddress = 0x7F;
// i2c-dev's limit on one message of I2C_RDWR.
constexpr std::uint16_t kLongestMessage = 8192;

template <typename T>
T* Pointer(unsigned long argument) {
  return reinterpret_cast<T*>(argument);
}

bool HasRecvLen(const i2c_msg& message) {
  return (message.flags & I2C_M_RECV_LEN) != 0;
}

}  // namespace

EmulatedI2cAdapter::EmulatedI2cAdapter(sim::Gauge* gauge, AdapterTraits traits)
    : wire_(gauge), traits_(traits) {}

unsigned long EmulatedI2cAdapter::Functions() const {
  unsigned long functions = I2C_FUNC_SMBUS_EMUL;
  if (traits_.plainI2c) functions |= I2C_FUNC_I2C;
  if (traits_.smbusBlockRead) functions |= I2C_FUNC_SMBUS_READ_BLOCK_DATA;
  if (!traits_.pec) functions &= ~static_cast<unsigned long>(I2C_FUNC_SMBUS_PEC);
  return functions;
}

int EmulatedI2cAdapter::Ioctl(I2cClient& client, unsigned long request, unsigned long argument) {
  const std::scoped_lock lock(mutex_);
  const int result = Answer(client, request, argument);
  if (result >= 0) return result;
  errno = -result;
  return -1;
}

std::uint64_t EmulatedI2cAdapter::Transfers() const {
  const std::scoped_lock lock(mutex_);
  return transfers_;
}

void EmulatedI2cAdapter::FailTransfer(int count) {
  const std::scoped_lock lock(mutex_);
  failingIn_ = std::max(count, 0);
}

std::vector<std::uint8_t> EmulatedI2cAdapter::LastWritten() const {
  const std::scoped_lock lock(mutex_);
  return lastWritten_;
}

void EmulatedI2cAdapter::SpoilNextReply(std::size_t index) {
  const std::scoped_lock lock(mutex_);
  spoiled_ = index;
}

int EmulatedI2cAdapter::Answer(I2cClient& client, unsigned long request, unsigned long argument) {
  switch (request) {
    case I2C_SLAVE:
    case I2C_SLAVE_FORCE:
      if (argument > kLargestSevenBitAddress) return -EINVAL;
      client.address = static_cast<std::uint16_t>(argument);
      return 0;
    case I2C_TENBIT:
      // The adapter has no 10-bit addressing.
      return argument == 0 ? 0 : -EINVAL;
    case I2C_PEC:
      client.pec = argument != 0;
      return 0;
    case I2C_RETRIES:
    case I2C_TIMEOUT:
      return argument > INT_MAX ? -EINVAL : 0;
    case I2C_FUNCS:
      if (argument == 0) return -EFAULT;
      *Pointer<unsigned long>(argument) = Functions();
      return 0;
    case I2C_RDWR:
      if (argument == 0) return -EFAULT;
      return ReadWrite(*Pointer<const i2c_rdwr_ioctl_data>(argument));
    case I2C_SMBUS:
      if (argument == 0) return -EFAULT;
      return SmbusIoctl(*Pointer<const i2c_smbus_ioctl_data>(argument), client.address,
                        client.pec && traits_.pec,
                        [this](std::span<i2c_msg> messages) { return Transfer(messages); });
    default:
      return -ENOTTY;
  }
}

// The kernel works on copies of the messages and their buffers, and gives back what was read
// only when the whole transfer went through.
int EmulatedI2cAdapter::ReadWrite(const i2c_rdwr_ioctl_data& request) {
  if (request.msgs == nullptr || request.nmsgs == 0 || request.nmsgs > I2C_RDWR_IOCTL_MAX_MSGS) {
    return -EINVAL;
  }
  const std::span<const i2c_msg> asked(request.msgs, request.nmsgs);
  std::vector<i2c_msg> messages(asked.begin(), asked.end());
  std::vector<sim::Bytes> buffers(messages.size());
  for (std::size_t i = 0; i < messages.size(); ++i) {
    i2c_msg& message = messages[i];
    if (message.len > kLongestMessage) return -EINVAL;
    buffers[i].assign(message.buf, message.buf + message.len);
    message.buf = buffers[i].data();
    // The buffer must hold the bytes asked for before the count (at least the count itself)
    // and the longest block a bus driver takes; those bytes are the length until the count
    // arrives.
    if (HasRecvLen(message)) {
      if ((message.flags & I2C_M_RD) == 0 || message.len == 0 || message.buf[0] < 1 ||
          message.len < message.buf[0] + I2C_SMBUS_BLOCK_MAX) {
        return -EINVAL;
      }
      message.len = message.buf[0];
    }
  }
  if (!traits_.plainI2c) return -EOPNOTSUPP;
  const int result = Transfer(messages);
  if (result < 0) return result;
  for (std::size_t i = 0; i < messages.size(); ++i) {
    if ((messages[i].flags & I2C_M_RD) != 0) {
      std::memcpy(asked[i].buf, messages[i].buf, messages[i].len);
    }
  }
  return result;
}

int EmulatedI2cAdapter::Transfer(std::span<i2c_msg> messages) {
  if (!traits_.smbusBlockRead && std::ranges::any_of(messages, HasRecvLen)) return -EOPNOTSUPP;
  ++transfers_;
  if (failingIn_ > 0 && --failingIn_ == 0) return -ENXIO;
  for (const i2c_msg& message : messages) {
    if ((message.flags & I2C_M_RD) == 0)
      lastWritten_.assign(message.buf, message.buf + message.len);
  }
  const auto steps = wire_.Plan(messages);
  if (!steps) return -ENXIO;
  for (const GaugeWire::Step& step : *steps) {
    const auto answer = wire_.Run(step);
    if (!answer) return -ENXIO;
    if (!step.IsRead()) continue;
    i2c_msg& reply = messages[step.reply];
    // The bus driver takes the count from the first byte, and 1 to 32 bytes after it.
    if (HasRecvLen(reply)) {
      const std::uint8_t count = (*answer)[0];
      if (count == 0 || count > I2C_SMBUS_BLOCK_MAX) return -EPROTO;
      reply.len = static_cast<std::uint16_t>(reply.len + count);
    }
    for (std::size_t i = 0; i < reply.len; ++i)
      reply.buf[i] = (*answer)[i];
    if (spoiled_ && *spoiled_ < reply.len) reply.buf[*spoiled_] ^= 0xFF;
    spoiled_.reset();
  }
  return static_cast<int>(messages.size());
}

}  // namespace ombrelay::i2c_emulation
