#include "i2c_emulation/smbus_transfer.h"

#include <array>
#include <cerrno>
#include <cstring>

#include "hosts/smbus_pec.h"

namespace ombrelay::i2c_emulation {
namespace {

bool KnownSize(std::uint32_t size) {
  switch (size) {
    case I2C_SMBUS_QUICK:
    case I2C_SMBUS_BYTE:
    case I2C_SMBUS_BYTE_DATA:
    case I2C_SMBUS_WORD_DATA:
    case I2C_SMBUS_PROC_CALL:
    case I2C_SMBUS_BLOCK_DATA:
    case I2C_SMBUS_I2C_BLOCK_BROKEN:
    case I2C_SMBUS_BLOCK_PROC_CALL:
    case I2C_SMBUS_I2C_BLOCK_DATA:
      return true;
    default:
      return false;
  }
}

// How much of the caller's data the kernel copies in and out.
std::size_t DataSize(std::uint32_t size) {
  switch (size) {
    case I2C_SMBUS_BYTE:
    case I2C_SMBUS_BYTE_DATA:
      return sizeof(i2c_smbus_data::byte);
    case I2C_SMBUS_WORD_DATA:
    case I2C_SMBUS_PROC_CALL:
      return sizeof(i2c_smbus_data::word);
    default:
      return sizeof(i2c_smbus_data::block);
  }
}

std::uint8_t MessagePec(std::uint8_t crc, const i2c_msg& message) {
  const auto address = static_cast<std::uint8_t>(message.addr << 1 | (message.flags & I2C_M_RD));
  return SmbusPec(std::span(message.buf, message.len), SmbusPec(std::span(&address, 1), crc));
}

void PutWord(std::uint8_t* bytes, std::uint16_t word) {
  bytes[0] = static_cast<std::uint8_t>(word & 0xFF);
  bytes[1] = static_cast<std::uint8_t>(word >> 8);
}

// The SMBus transfer as a write, a read, or a write and a read; 0 or -errno. data holds what is
// written and takes what is read.
int Emulate(std::uint16_t address, bool pec, bool read, std::uint8_t command, std::uint32_t size,
            i2c_smbus_data& data, const MessageTransfer& transfer) {
  std::array<std::uint8_t, I2C_SMBUS_BLOCK_MAX + 3> out{command};
  std::array<std::uint8_t, I2C_SMBUS_BLOCK_MAX + 2> in{};
  std::array<i2c_msg, 2> messages{{{address, 0, 1, out.data()}, {address, I2C_M_RD, 0, in.data()}}};
  std::size_t count = read ? 2 : 1;
  switch (size) {
    case I2C_SMBUS_QUICK:
      // The direction bit is the data.
      messages[0].len = 0;
      messages[0].flags = read ? I2C_M_RD : 0;
      count = 1;
      break;
    case I2C_SMBUS_BYTE:
      if (read) {
        messages[0].flags = I2C_M_RD;
        count = 1;
      }
      break;
    case I2C_SMBUS_BYTE_DATA:
      if (read) {
        messages[1].len = 1;
      } else {
        messages[0].len = 2;
        out[1] = data.byte;
      }
      break;
    case I2C_SMBUS_WORD_DATA:
      if (read) {
        messages[1].len = 2;
      } else {
        messages[0].len = 3;
        PutWord(&out[1], data.word);
      }
      break;
    case I2C_SMBUS_PROC_CALL:
      read = true;
      count = 2;
      messages[0].len = 3;
      PutWord(&out[1], data.word);
      messages[1].len = 2;
      break;
    case I2C_SMBUS_BLOCK_DATA:
    case I2C_SMBUS_BLOCK_PROC_CALL:
      if (size == I2C_SMBUS_BLOCK_PROC_CALL) {
        read = true;
        count = 2;
      }
      if (size == I2C_SMBUS_BLOCK_PROC_CALL || !read) {
        if (data.block[0] < 1 || data.block[0] > I2C_SMBUS_BLOCK_MAX) return -EINVAL;
        messages[0].len = static_cast<std::uint16_t>(data.block[0] + 2);
        std::memcpy(&out[1], data.block, data.block[0] + 1u);
      }
      if (read) {
        messages[1].flags |= I2C_M_RECV_LEN;
        messages[1].len = 1;  // the count byte; the bus adds the count
      }
      break;
    default:  // I2C_SMBUS_I2C_BLOCK_DATA
      if (data.block[0] > I2C_SMBUS_BLOCK_MAX) return -EINVAL;
      if (read) {
        messages[1].len = data.block[0];
      } else {
        messages[0].len = static_cast<std::uint16_t>(data.block[0] + 1);
        std::memcpy(&out[1], &data.block[1], data.block[0]);
      }
      break;
  }

  const bool wantsPec = pec && size != I2C_SMBUS_QUICK && size != I2C_SMBUS_I2C_BLOCK_DATA;
  i2c_msg& last = messages[count - 1];
  std::uint8_t partialPec = 0;
  if (wantsPec) {
    if ((messages[0].flags & I2C_M_RD) == 0) {
      if (count == 1) {
        out[messages[0].len] = MessagePec(0, messages[0]);
        ++messages[0].len;
      } else {
        partialPec = MessagePec(0, messages[0]);
      }
    }
    if ((last.flags & I2C_M_RD) != 0) ++last.len;
  }

  const int status = transfer(std::span(messages.data(), count));
  if (status < 0) return status;
  if (wantsPec && (last.flags & I2C_M_RD) != 0) {
    --last.len;
    if (MessagePec(partialPec, last) != last.buf[last.len]) return -EBADMSG;
  }
  if (!read) return 0;
  switch (size) {
    case I2C_SMBUS_BYTE:
      data.byte = out[0];
      break;
    case I2C_SMBUS_BYTE_DATA:
      data.byte = in[0];
      break;
    case I2C_SMBUS_WORD_DATA:
    case I2C_SMBUS_PROC_CALL:
      data.word = static_cast<std::uint16_t>(in[0] | in[1] << 8);
      break;
    case I2C_SMBUS_I2C_BLOCK_DATA:
      std::memcpy(&data.block[1], in.data(), data.block[0]);
      break;
    default:  // the SMBus blocks, whose count the bus has checked
      std::memcpy(data.block, in.data(), in[0] + 1u);
      break;
  }
  return 0;
}

}  // namespace

int SmbusIoctl(const i2c_smbus_ioctl_data& request, std::uint16_t address, bool pec,
               const MessageTransfer& transfer) {
  std::uint32_t size = request.size;
  if (!KnownSize(size)) return -EINVAL;
  if (request.read_write != I2C_SMBUS_READ && request.read_write != I2C_SMBUS_WRITE) return -EINVAL;
  const bool read = request.read_write == I2C_SMBUS_READ;
  i2c_smbus_data data{};
  // The quick command and a byte write carry nothing in data.
  if (size == I2C_SMBUS_QUICK || (size == I2C_SMBUS_BYTE && !read)) {
    return Emulate(address, pec, read, request.command, size, data, transfer);
  }
  if (request.data == nullptr) return -EINVAL;
  const std::size_t dataSize = DataSize(size);
  const bool answers = read || size == I2C_SMBUS_PROC_CALL || size == I2C_SMBUS_BLOCK_PROC_CALL;
  if (!read || size == I2C_SMBUS_PROC_CALL || size == I2C_SMBUS_BLOCK_PROC_CALL ||
      size == I2C_SMBUS_I2C_BLOCK_DATA) {
    std::memcpy(&data, request.data, dataSize);
  }
  if (size == I2C_SMBUS_I2C_BLOCK_BROKEN) {
    size = I2C_SMBUS_I2C_BLOCK_DATA;
    if (read) data.block[0] = I2C_SMBUS_BLOCK_MAX;
  }
  const int status = Emulate(address, pec, read, request.command, size, data, transfer);
  if (status == 0 && answers) std::memcpy(request.data, &data, dataSize);
  return status;
}

}  // namespace ombrelay::i2c_emulation
