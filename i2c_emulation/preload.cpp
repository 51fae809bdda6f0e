// Loaded with LD_PRELOAD into any program: stands in for the buses OMBRELAY_EMULATED_I2C names,
// each with a fresh sample gauge on the machine's clock. A variable that is not well formed is
// reported once and nothing is emulated; the program runs on regardless.

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "i2c_emulation/device_table.h"
#include "i2c_emulation/emulated_buses_variable.h"
#include "sim/sample_gauges.h"

namespace ombrelay::i2c_emulation {
namespace {

// A bus and all it needs, kept alive by the adapter the table holds.
struct PreloadedBus {
  explicit PreloadedBus(const EmulatedBusEntry& entry)
      : gauge(entry.gauge ? sim::MakeSampleGauge(*entry.gauge, clock) : nullptr),
        adapter(gauge.get(), entry.adapter) {
    if (entry.sealed) gauge->SetSecurityMode(sim::SecurityMode::Sealed);
    adapter.FailTransfer(entry.failTransfer);
  }

  sim::RealClock clock;
  std::unique_ptr<sim::Gauge> gauge;
  EmulatedI2cAdapter adapter;
};

__attribute__((constructor)) void EmulateNamedBuses() {
  const char* text = std::getenv(kEmulatedBusesVariable);
  if (text == nullptr) return;
  std::string error;
  const auto buses = ParseEmulatedBuses(text, error);
  if (!buses) {
    std::fprintf(stderr, "libombrelay-emulated-i2c: %s: %s; emulating nothing\n",
                 kEmulatedBusesVariable, error.c_str());
    return;
  }
  for (const EmulatedBusEntry& entry : *buses) {
    const auto bus = std::make_shared<PreloadedBus>(entry);
    DeviceTable::Instance().Register(
        entry.path, {std::shared_ptr<EmulatedI2cAdapter>(bus, &bus->adapter), entry.device});
  }
}

}  // namespace
}  // namespace ombrelay::i2c_emulation
