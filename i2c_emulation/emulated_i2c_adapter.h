#pragma once
// The kernel's side of one /dev/i2c-N: the ioctls of i2c-dev, answered as the kernel answers
// them, on a bus with the simulated gauge (or nothing) at its 7-bit address 0x0B. The adapter
// adds no time of its own.

#include <linux/i2c-dev.h>
#include <linux/i2c.h>

#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "i2c_emulation/gauge_wire.h"
#include "sim/gauge.h"

namespace ombrelay::i2c_emulation {

// What the bus driver behind the adapter can do.
struct AdapterTraits {
  bool plainI2c = true;        // I2C_RDWR; without it the adapter is an SMBus controller
  bool smbusBlockRead = true;  // reads whose length the device sends
  bool pec = true;             // SMBus packet error checking
};

// What the kernel keeps for each open file of the bus.
struct I2cClient {
  std::uint16_t address = 0;  // chosen with I2C_SLAVE, for SMBus transfers
  bool pec = false;
};

class EmulatedI2cAdapter {
 public:
  explicit EmulatedI2cAdapter(sim::Gauge* gauge, AdapterTraits traits = {});

  unsigned long Functions() const;
  // An ioctl on a file open on the bus: its result, or -1 with errno set. Safe from any thread.
  int Ioctl(I2cClient& client, unsigned long request, unsigned long argument);

  // Transfers put on the bus, answered or not.
  std::uint64_t Transfers() const;
  // The count-th transfer from now fails as if nothing answered; 0 fails none.
  void FailTransfer(int count);
  // The bytes of the last write message that went on the wire, PEC included.
  std::vector<std::uint8_t> LastWritten() const;
  // Byte index of the next read's reply arrives inverted, as line noise would spoil it after the
  // gauge worked out its PEC.
  void SpoilNextReply(std::size_t index);

 private:
  int Answer(I2cClient& client, unsigned long request, unsigned long argument);
  int ReadWrite(const i2c_rdwr_ioctl_data& request);
  int Transfer(std::span<i2c_msg> messages);

  mutable std::mutex mutex_;
  GaugeWire wire_;
  AdapterTraits traits_;
  std::uint64_t transfers_ = 0;
  int failingIn_ = 0;
  std::vector<std::uint8_t> lastWritten_;
  std::optional<std::size_t> spoiled_;
};

}  // namespace ombrelay::i2c_emulation
