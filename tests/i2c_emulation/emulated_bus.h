#pragma once
// A sample gauge on a virtual clock behind an emulated /dev/i2c-N, opened as any program opens
// it and addressed at the gauge, for the tests that drive the emulation through system calls.

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <memory>

#include "i2c_emulation/device_table.h"
#include "i2c_emulation/emulated_i2c_adapter.h"
#include "sim/sample_gauges.h"

namespace ombrelay::i2c_emulation {

inline constexpr const char* kEmulatedPath = "/dev/i2c-70";

inline AdapterTraits Without(bool AdapterTraits::*trait) {
  AdapterTraits traits;
  traits.*trait = false;
  return traits;
}

struct EmulatedBus {
  explicit EmulatedBus(sim::Family family = sim::Family::Morlin, AdapterTraits traits = {},
                       bool withGauge = true)
      : gauge(withGauge ? sim::MakeSampleGauge(family, clock) : nullptr),
        adapter(std::make_shared<EmulatedI2cAdapter>(gauge.get(), traits)),
        device(kEmulatedPath, adapter),
        fd(::open(kEmulatedPath, O_RDWR)) {
    ::ioctl(fd, I2C_SLAVE, kGaugeAddress);
  }
  ~EmulatedBus() { ::close(fd); }
  EmulatedBus(const EmulatedBus&) = delete;
  EmulatedBus& operator=(const EmulatedBus&) = delete;

  sim::VirtualClock clock;
  std::unique_ptr<sim::Gauge> gauge;
  std::shared_ptr<EmulatedI2cAdapter> adapter;
  RegisteredDevice device;
  int fd;
};

}  // namespace ombrelay::i2c_emulation
