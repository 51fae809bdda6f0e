#include "hosts/i2c_buses.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <system_error>

namespace ombrelay {
namespace {

constexpr std::string_view kAdapterPrefix = "i2c-";

// The whole text as a number of no more than a few digits; nothing for anything else.
std::optional<int> BusNumber(std::string_view text) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (text.empty() || error != std::errc() || stop != end || number < 0) return std::nullopt;
  return number;
}

std::string DevicePath(int number) {
  return "/dev/i2c-" + std::to_string(number);
}

}  // namespace

std::vector<I2cBus> ListI2cBuses(const std::filesystem::path& adapters) {
  std::vector<I2cBus> buses;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(adapters, error)) {
    const std::string folder = entry.path().filename().string();
    if (!folder.starts_with(kAdapterPrefix)) continue;
    const std::optional<int> number =
        BusNumber(std::string_view(folder).substr(kAdapterPrefix.size()));
    if (!number) continue;
    std::string name;
    std::ifstream file(entry.path() / "name");
    std::getline(file, name);
    buses.push_back({*number, DevicePath(*number), name});
  }
  std::ranges::sort(buses, {}, &I2cBus::number);
  return buses;
}

std::optional<std::string> I2cBusPath(std::string_view bus) {
  if (const std::optional<int> number = BusNumber(bus)) return DevicePath(*number);
  if (bus.find('/') != std::string_view::npos) return std::string(bus);
  return std::nullopt;
}

}  // namespace ombrelay
