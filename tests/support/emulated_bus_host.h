#pragma once
// A SimBench's gauge behind an emulated /dev/i2c bus, and the bench's recorded host sent through
// the real I2cDevHost on it in place of the simulator's own host: libi2c and the kernel's ioctls
// carry every transfer, and the host's waits run on the bench's virtual clock.

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "hosts/i2c_dev_host.h"
#include "i2c_emulation/device_table.h"
#include "tests/support/sim_bench.h"

namespace ombrelay::testing {

enum class EmulatedBusKind {
  Full,                // plain I2C, SMBus block reads and PEC, without PEC in use
  FullWithPec,         // the same with PEC on every transfer
  NoBlockRead,         // a bus driver without SMBus block reads
  NoBlockReadWithPec,  // the same with PEC on every transfer
  SmbusOnly,           // an SMBus controller: no plain I2C transfers
};
inline constexpr std::array kEveryWorkingBusKind = {
    EmulatedBusKind::Full, EmulatedBusKind::FullWithPec, EmulatedBusKind::NoBlockRead,
    EmulatedBusKind::NoBlockReadWithPec};
std::string EmulatedBusKindName(EmulatedBusKind kind);

class EmulatedBusHost {
 public:
  static constexpr const char* kPath = "/dev/i2c-17";

  EmulatedBusHost(SimBench& bench, EmulatedBusKind kind = EmulatedBusKind::Full);
  // Puts the simulator's own host back.
  ~EmulatedBusHost();
  EmulatedBusHost(const EmulatedBusHost&) = delete;
  EmulatedBusHost& operator=(const EmulatedBusHost&) = delete;

  i2c_emulation::EmulatedI2cAdapter& Adapter() { return *adapter_; }
  // The sentences of the transfers that failed so far.
  const std::vector<std::string>& Failures() const { return failures_; }

 private:
  SimBench& bench_;
  std::shared_ptr<i2c_emulation::EmulatedI2cAdapter> adapter_;
  i2c_emulation::RegisteredDevice device_;
  std::unique_ptr<I2cDevHost> host_;
  std::vector<std::string> failures_;
};

}  // namespace ombrelay::testing
