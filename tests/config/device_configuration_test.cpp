#include "config/device_configuration.h"

#include <gtest/gtest.h>

#include "config/app_directory.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

using testing::Boxes;
using testing::Shown;
using testing::SimBench;

// The security panel's own loading: each failure has its say, all with the stop icon but the
// one the section search shows itself, and none ends the loading.
TEST(SecurityPanelConfiguration, WithoutAGaugeEveryStepReportsInItsOwnStyle) {
  SimBench bench(std::nullopt);
  LoadConfigurationforSecurityPanel();
  const std::vector<Shown> expected = {
      {"Unable to read device number and firmware version of connected device. Please ensure "
       "device is connected and operating. Restart this tool with device connected.",
       MessageStyle::Error},
      {"Data Flash Configuration not found in Quvara installation. Please obtain a version of "
       "Quvara that supports this device and Firmware version. Using this tool on an unsupported "
       "device may destroy it.",
       MessageStyle::Error},
      {"A section name matching device and firmware version was not found in configuration file " +
           ApplicationDirectory() + "config.ini. Please obtain Quvara that supports this Firmware.",
       MessageStyle::Plain},
      {"Could not find Quvara configured version for connected Firmware or key configuration "
       "incorrect in application directory in file config.ini.",
       MessageStyle::Error}};
  EXPECT_EQ(Boxes(bench.platform), expected);
}

TEST(SecurityPanelConfiguration, AKnownGaugeLoadsSilently) {
  SimBench bench(sim::Family::KeldPlus);
  LoadConfigurationforSecurityPanel();
  EXPECT_TRUE(bench.MessageTexts().empty());
  EXPECT_EQ(g_iDFType, KELD_PLUS);
  EXPECT_EQ(g_sDeviceNumber, "4B60");
}

}  // namespace
}  // namespace ombrelay
