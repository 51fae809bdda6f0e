#include "i2c_emulation/emulated_buses_variable.h"

#include <gtest/gtest.h>

namespace ombrelay::i2c_emulation {
namespace {

TEST(EmulatedBusesVariable, NamesEachBusItsGaugeAndTraits) {
  std::string error;
  const auto buses = ParseEmulatedBuses(
      "7=morlin;8=keld,no-block-read,fail-transfer=4;9=quill,smbus-only,sealed,no-pec;10=deny;"
      "11=none",
      error);
  ASSERT_TRUE(buses) << error;
  ASSERT_EQ(buses->size(), 5u);
  const auto& [morlin, keld, quill, denied, empty] =
      std::tie((*buses)[0], (*buses)[1], (*buses)[2], (*buses)[3], (*buses)[4]);
  EXPECT_EQ(morlin.path, "/dev/i2c-7");
  EXPECT_EQ(morlin.gauge, sim::Family::Morlin);
  EXPECT_TRUE(morlin.adapter.plainI2c && morlin.adapter.smbusBlockRead && morlin.adapter.pec);
  EXPECT_FALSE(keld.adapter.smbusBlockRead);
  EXPECT_EQ(keld.failTransfer, 4);
  EXPECT_TRUE(quill.sealed);
  EXPECT_FALSE(quill.adapter.plainI2c || quill.adapter.pec);
  EXPECT_TRUE(denied.device.deny);
  EXPECT_FALSE(denied.gauge || empty.gauge);
  EXPECT_EQ(empty.path, "/dev/i2c-11");
}

TEST(EmulatedBusesVariable, RefusesTextsThatAreNotWellFormed) {
  for (const char* text : {"morlin", "x=morlin", "7", "7=morlin;7=keld", "7=morlin,keld",
                           "7=morlin,fast", "7=sealed", "7=keld,fail-transfer=-1", "-1=keld"}) {
    std::string error;
    EXPECT_FALSE(ParseEmulatedBuses(text, error)) << text;
    EXPECT_FALSE(error.empty()) << text;
  }
}

}  // namespace
}  // namespace ombrelay::i2c_emulation
