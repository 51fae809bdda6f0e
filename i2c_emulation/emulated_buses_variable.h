#pragma once
// The buses a preloaded emulation stands in for, as OMBRELAY_EMULATED_I2C names them: entries
// "N=items" separated by ';', each the bus /dev/i2c-N, its items separated by ','. An item is a
// family ("morlin", "keld", ...) for a fresh sample gauge of it, "none" for a bus with nothing
// on it (also what a bus without a family has), or an option: "sealed", "no-block-read",
// "smbus-only", "no-pec", "deny", "fail-transfer=K". For example
// "7=morlin;8=keld,no-block-read;9=quill,smbus-only,sealed;10=deny;11=none".

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "i2c_emulation/device_table.h"
#include "i2c_emulation/emulated_i2c_adapter.h"
#include "sim/family.h"

namespace ombrelay::i2c_emulation {

inline constexpr const char* kEmulatedBusesVariable = "OMBRELAY_EMULATED_I2C";

struct EmulatedBusEntry {
  std::string path;                  // "/dev/i2c-N"
  std::optional<sim::Family> gauge;  // nothing: no gauge on the bus
  bool sealed = false;
  AdapterTraits adapter;
  DeviceTraits device;
  int failTransfer = 0;  // see EmulatedI2cAdapter::FailTransfer
};

// Nothing, with the reason in error, for a text that is not well formed.
std::optional<std::vector<EmulatedBusEntry>> ParseEmulatedBuses(std::string_view text,
                                                                std::string& error);

}  // namespace ombrelay::i2c_emulation
