#pragma once
// The I2C buses the kernel offers, and the names users give them.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrelay {

struct I2cBus {
  int number = 0;
  std::string path;  // "/dev/i2c-N"
  std::string name;  // the adapter's own name, as the kernel gives it
};

inline constexpr const char* kI2cAdapters = "/sys/class/i2c-adapter";

// Every adapter under adapters, by number; none when the folder is missing.
std::vector<I2cBus> ListI2cBuses(const std::filesystem::path& adapters = kI2cAdapters);

// "N" means /dev/i2c-N; a path stays as it is. Nothing for anything else.
std::optional<std::string> I2cBusPath(std::string_view bus);

}  // namespace ombrelay
