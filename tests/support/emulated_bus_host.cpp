#include "tests/support/emulated_bus_host.h"

#include <gtest/gtest.h>

namespace ombrelay::testing {
namespace {

i2c_emulation::AdapterTraits TraitsOf(EmulatedBusKind kind) {
  i2c_emulation::AdapterTraits traits;
  traits.smbusBlockRead =
      kind != EmulatedBusKind::NoBlockRead && kind != EmulatedBusKind::NoBlockReadWithPec;
  traits.plainI2c = kind != EmulatedBusKind::SmbusOnly;
  return traits;
}

bool WithPec(EmulatedBusKind kind) {
  return kind == EmulatedBusKind::FullWithPec || kind == EmulatedBusKind::NoBlockReadWithPec;
}

}  // namespace

std::string EmulatedBusKindName(EmulatedBusKind kind) {
  switch (kind) {
    case EmulatedBusKind::Full:
      return "Full";
    case EmulatedBusKind::FullWithPec:
      return "FullWithPec";
    case EmulatedBusKind::NoBlockRead:
      return "NoBlockRead";
    case EmulatedBusKind::NoBlockReadWithPec:
      return "NoBlockReadWithPec";
    case EmulatedBusKind::SmbusOnly:
      return "SmbusOnly";
  }
  return "";
}

EmulatedBusHost::EmulatedBusHost(SimBench& bench, EmulatedBusKind kind)
    : bench_(bench),
      adapter_(
          std::make_shared<i2c_emulation::EmulatedI2cAdapter>(bench.gauge.get(), TraitsOf(kind))),
      device_(kPath, adapter_) {
  I2cDevHost::Options options;
  options.pec = WithPec(kind);
  options.sleep = [&bench](std::int32_t milliseconds) { bench.clock.Advance(milliseconds); };
  std::string error;
  host_ = I2cDevHost::Open(kPath, options, error);
  EXPECT_TRUE(host_) << error;
  if (!host_) return;
  host_->onFailure = [this](const std::string& sentence) { failures_.push_back(sentence); };
  bench.host.SetInner(*host_);
}

EmulatedBusHost::~EmulatedBusHost() {
  bench_.host.SetInner(bench_.bus);
}

}  // namespace ombrelay::testing
