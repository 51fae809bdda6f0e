#include "i2c_emulation/emulated_buses_variable.h"

#include <algorithm>
#include <charconv>
#include <ranges>

namespace ombrelay::i2c_emulation {
namespace {

std::optional<int> Number(std::string_view text) {
  int value = 0;
  const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || status != std::errc() || end != text.data() + text.size() || value < 0) {
    return std::nullopt;
  }
  return value;
}

// Applies one item to bus; false when the item means nothing.
bool Apply(std::string_view item, EmulatedBusEntry& bus, bool& gaugeNamed) {
  constexpr std::string_view kFailTransfer = "fail-transfer=";
  if (item.starts_with(kFailTransfer)) {
    const auto count = Number(item.substr(kFailTransfer.size()));
    if (count) bus.failTransfer = *count;
    return count.has_value();
  }
  if (item == "sealed") {
    bus.sealed = true;
  } else if (item == "no-block-read") {
    bus.adapter.smbusBlockRead = false;
  } else if (item == "smbus-only") {
    bus.adapter.plainI2c = false;
  } else if (item == "no-pec") {
    bus.adapter.pec = false;
  } else if (item == "deny") {
    bus.device.deny = true;
  } else if (!gaugeNamed && item == "none") {
    gaugeNamed = true;
  } else if (const auto family = sim::FamilyFromName(item); !gaugeNamed && family) {
    bus.gauge = family;
    gaugeNamed = true;
  } else {
    return false;
  }
  return true;
}

std::string Quoted(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

}  // namespace

std::optional<std::vector<EmulatedBusEntry>> ParseEmulatedBuses(std::string_view text,
                                                                std::string& error) {
  std::vector<EmulatedBusEntry> buses;
  for (const auto part : std::views::split(text, ';')) {
    const std::string_view entry(part.begin(), part.end());
    if (entry.empty()) continue;
    const auto equals = entry.find('=');
    const auto number = Number(entry.substr(0, equals));
    if (equals == std::string_view::npos || !number) {
      error = Quoted(entry) + " is not N=items, N the number of a bus";
      return std::nullopt;
    }
    EmulatedBusEntry bus;
    bus.path = "/dev/i2c-" + std::to_string(*number);
    if (std::ranges::any_of(buses, [&](const auto& other) { return other.path == bus.path; })) {
      error = "bus " + std::to_string(*number) + " is named twice";
      return std::nullopt;
    }
    bool gaugeNamed = false;
    for (const auto itemPart : std::views::split(entry.substr(equals + 1), ',')) {
      const std::string_view item(itemPart.begin(), itemPart.end());
      if (!Apply(item, bus, gaugeNamed)) {
        error =
            Quoted(item) + " on bus " + std::to_string(*number) + " is no family, none or option";
        return std::nullopt;
      }
    }
    if (bus.sealed && !bus.gauge) {
      error = "bus " + std::to_string(*number) + " has no gauge to seal";
      return std::nullopt;
    }
    buses.push_back(std::move(bus));
  }
  return buses;
}

}  // namespace ombrelay::i2c_emulation
