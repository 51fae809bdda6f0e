#include "hosts/i2c_buses.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace ombrelay {
namespace {

TEST(I2cBuses, ListsTheAdaptersByNumberWithTheirNames) {
  const auto adapters = std::filesystem::path(::testing::TempDir()) / "ombrelay_i2c_adapters";
  std::filesystem::remove_all(adapters);
  const auto adapter = [&adapters](const char* folder, const char* name) {
    std::filesystem::create_directories(adapters / folder);
    if (name != nullptr) std::ofstream(adapters / folder / "name") << name << '\n';
  };
  adapter("i2c-10", "SMBus I801 adapter at efa0");
  adapter("i2c-2", "i915 gmbus dpb");
  adapter("i2c-x", "not a bus");
  adapter("spi-1", "not i2c");
  adapter("i2c-3", nullptr);

  const std::vector<I2cBus> buses = ListI2cBuses(adapters);
  ASSERT_EQ(buses.size(), 3u);
  EXPECT_EQ(buses[0].number, 2);
  EXPECT_EQ(buses[0].path, "/dev/i2c-2");
  EXPECT_EQ(buses[0].name, "i915 gmbus dpb");
  EXPECT_EQ(buses[1].path, "/dev/i2c-3");
  EXPECT_EQ(buses[1].name, "");
  EXPECT_EQ(buses[2].path, "/dev/i2c-10");
  EXPECT_EQ(buses[2].name, "SMBus I801 adapter at efa0");

  EXPECT_TRUE(ListI2cBuses(adapters / "missing").empty());
  std::filesystem::remove_all(adapters);
}

TEST(I2cBuses, NamesABusByNumberOrPath) {
  const std::vector<std::pair<const char*, std::optional<std::string>>> cases = {
      {"1", "/dev/i2c-1"},        {"12", "/dev/i2c-12"},   {"/dev/i2c-4", "/dev/i2c-4"},
      {"./i2c-emu", "./i2c-emu"}, {"", std::nullopt},      {"-1", std::nullopt},
      {"1a", std::nullopt},       {"i2c-1", std::nullopt},
  };
  for (const auto& [bus, path] : cases)
    EXPECT_EQ(I2cBusPath(bus), path) << bus;
}

}  // namespace
}  // namespace ombrelay
