#include "hosts/i2c_buses.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <system_error>

namespace ombrelay {
namespace {

constexpr std::string_view kAdapterPrefix = "i2c-";
constexpr std::string_view kDevicePrefix = "/dev/i2c-";

std::optional<int> Number(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 0) return std::nullopt;
  return number;
}

std::string FirstLine(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::string line;
  std::getline(in, line);
  return line;
}

}  // namespace

std::vector<I2cBus> ListI2cBuses(const std::filesystem::path& adapters) {
  std::vector<I2cBus> buses;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(adapters, error)) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with(kAdapterPrefix)) continue;
    const std::optional<int> number = Number(std::string_view(name).substr(kAdapterPrefix.size()));
    if (!number) continue;
    buses.push_back({*number, std::string(kDevicePrefix) + std::to_string(*number),
                     FirstLine(entry.path() / "name")});
  }
  std::ranges::sort(buses, {}, &I2cBus::number);
  return buses;
}

std::optional<std::string> I2cBusPath(std::string_view bus) {
  if (bus.find('/') != std::string_view::npos) return std::string(bus);
  const std::optional<int> number = Number(bus);
  if (!number) return std::nullopt;
  return std::string(kDevicePrefix) + std::to_string(*number);
}

}  // namespace ombrelay
