#pragma once
// The kernel's I2C_SMBUS ioctl on a bus that carries I2C messages: the arguments checked as
// i2c-dev checks them, the transfer turned into messages as the kernel emulates SMBus on such a
// bus, a PEC added to what is written and checked on what is read.

#include <linux/i2c-dev.h>
#include <linux/i2c.h>

#include <cstdint>
#include <functional>
#include <span>

namespace ombrelay::i2c_emulation {

// Puts messages on the bus: how many went through, or -errno. A read message whose length the
// device sends comes back with its length grown by the count.
using MessageTransfer = std::function<int(std::span<i2c_msg> messages)>;

// 0, or -errno; the caller's data is written only when the transfer succeeds.
int SmbusIoctl(const i2c_smbus_ioctl_data& request, std::uint16_t address, bool pec,
               const MessageTransfer& transfer);

}  // namespace ombrelay::i2c_emulation
