#pragma once
// The host's bus operations on a real adapter, through the kernel's i2c-dev interface
// (/dev/i2c-N): libi2c for the SMBus transfers the bus offers, the I2C_RDWR ioctl for what SMBus
// cannot carry. The panels' 8-bit addresses (0x16, 0x17) become the kernel's 7-bit one (0x0B).
//
// Block reads are plain I2C reads of the count byte and the longest block the caller can take,
// the count taken from the first byte, whenever the bus can do plain I2C: an SMBus block read
// stops at 32 bytes, and some gauges answer 64. On a bus without plain I2C they are SMBus block
// reads. Block writes of up to 32 bytes are SMBus block writes where the bus has them; longer
// ones go out whole through I2C_RDWR, or not at all.

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <string>

#include "shell/host.h"

struct i2c_msg;

namespace ombrelay {

class I2cDevHost final : public Host {
 public:
  struct Options {
    // Packet error checking on every transfer: the kernel's for SMBus transfers, ours for
    // I2C_RDWR ones.
    bool pec = false;
    // Delay's wait; the default sleeps on the machine's clock without spinning.
    std::function<void(std::int32_t milliseconds)> sleep;
  };

  // Opens the bus at path ("/dev/i2c-N") and reads what it can do. Nothing, with a sentence for
  // the user in error, when the bus is missing, may not be opened or is no I2C bus.
  static std::unique_ptr<I2cDevHost> Open(const std::string& path, Options options,
                                          std::string& error);
  ~I2cDevHost() override;
  I2cDevHost(const I2cDevHost&) = delete;
  I2cDevHost& operator=(const I2cDevHost&) = delete;

  Status ReadSMBusBlock_(std::int32_t command, std::span<std::uint8_t> data, std::int16_t& length,
                         std::int16_t address) override;
  Status ReadSMBusBlock(std::int32_t command, std::string& text, std::int16_t address) override;
  Status WriteSMBusBlock(std::int32_t command, std::span<const std::uint8_t> data,
                         std::int16_t length, std::int16_t address) override;
  Status ReadSMBusWord(std::int32_t command, std::uint8_t& high, std::uint8_t& low,
                       std::int16_t address) override;
  Status ReadSMBusWord_(std::int32_t command, std::int16_t& word, std::int16_t address) override;
  Status WriteSMBusWord(std::int32_t command, std::uint8_t high, std::uint8_t low,
                        std::int16_t address) override;
  Status WriteSMBusWord_(std::int32_t command, std::int16_t word, std::int16_t address) override;
  // Each failed transfer leaves its errno here, once.
  std::int32_t CheckForError() override;
  void Delay(std::int16_t count) override;

  const std::string& Path() const { return path_; }
  // Told of every failed transfer, in a sentence that names the bus, the transfer and why.
  std::function<void(const std::string&)> onFailure;

 private:
  // One call of the host, for the sentence that says why it failed.
  struct Call {
    const char* operation;
    std::int32_t command;
    std::int16_t address;
  };

  I2cDevHost(int fd, std::string path, unsigned long functions, Options options);

  bool Can(unsigned long function) const { return (functions_ & function) != 0; }
  // The 7-bit address of a call that the bus can carry; otherwise a failed call.
  // The checks and the addressing inline, the rest out of the way: they run before every
  // transfer, right after the kernel's last.
  [[gnu::always_inline]] inline Status Begin(const Call& call, int& address);
  // Out of the way of the transfers that go ahead.
  [[gnu::cold]] Status Refuse(const Call& call);
  // Points the descriptor at address for the SMBus transfers.
  [[gnu::always_inline]] inline Status Select(const Call& call, int address);
  [[gnu::cold]] Status Reselect(const Call& call, int address);
  // The messages as one combined transfer.
  [[gnu::always_inline]] inline Status Combined(const Call& call,
                                                std::span<struct i2c_msg> messages);
  // Leaves error pending, tells onFailure and gives error back as the status.
  Status Fail(const Call& call, int error, const std::string& why = {});
  Status CheckReadPec(const Call& call, int address, std::span<const std::uint8_t> answer,
                      std::uint8_t pec);

  [[gnu::always_inline]] inline Status ReadBlock(const Call& call, std::span<std::uint8_t> data,
                                                 std::size_t& length);
  [[gnu::always_inline]] inline Status ReadWord(const Call& call, std::uint16_t& word);
  [[gnu::always_inline]] inline Status WriteWord(const Call& call, std::uint16_t word);

  int fd_;
  std::string path_;
  unsigned long functions_;
  Options options_;
  int selected_ = -1;  // the address the SMBus transfers go to
  std::deque<std::int32_t> pending_;
};

}  // namespace ombrelay
