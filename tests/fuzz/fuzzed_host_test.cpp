#include "fuzz/fuzzed_host.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "fuzz/calibration_scenario.h"
#include "fuzz/run_limits.h"
#include "fuzz/sample_replies.h"
#include "panel/nbcal.h"
#include "platforms/virtual_platform.h"
#include "shell/shared_state.h"
#include "tests/support/panel_bench.h"

namespace ombrelay::fuzz {
namespace {

struct FuzzedBus {
  explicit FuzzedBus(std::vector<std::uint8_t> bytes) : replies(std::move(bytes)) {}
  std::vector<std::uint8_t> replies;
  sim::VirtualClock clock;
  RunLimits limits{clock};
  FuzzedHost host{replies, clock, limits};
};

TEST(FuzzedHost, TransfersFailFromTheFailingStatusOnAnOverlongBlockAndOnceTheBytesRunOut) {
  FuzzedBus bus({0x00, 0x12, 0x34, 0xE0, 0x00, 3, 'a', 'b', 'c', 0x00, 2, 'x', 'y', 0x00, 5, 'z'});
  std::int16_t word = 0;
  EXPECT_EQ(bus.host.ReadSMBusWord_(0x09, word, 0x17), 0);
  EXPECT_EQ(word, 0x1234);
  EXPECT_NE(bus.host.ReadSMBusWord_(0x09, word, 0x17), 0);
  std::array<std::uint8_t, 2> room{};
  std::int16_t length = 0;
  EXPECT_NE(bus.host.ReadSMBusBlock_(0x23, room, length, 0x17), 0);
  EXPECT_EQ(bus.host.ReadSMBusBlock_(0x23, room, length, 0x17), 0);
  EXPECT_EQ(length, 2);
  EXPECT_EQ(room[1], 'y');
  // Five bytes promised, one left.
  EXPECT_NE(bus.host.ReadSMBusBlock_(0x23, room, length, 0x17), 0);
  EXPECT_NE(bus.host.WriteSMBusWord_(0x00, 0x0021, 0x16), 0);
}

TEST(FuzzedHost, PendingErrorsEndAfterThreeInARowSoThatDrainsEnd) {
  FuzzedBus bus({5, 6, 7, 8, 9});
  std::vector<std::int32_t> pending;
  for (int i = 0; i < 6; ++i)
    pending.push_back(bus.host.CheckForError());
  EXPECT_EQ(pending, (std::vector<std::int32_t>{5, 6, 7, 0, 8, 9}));
  EXPECT_EQ(bus.host.CheckForError(), 0);
}

class RecordedSample : public ::testing::TestWithParam<sim::Family> {};

TEST_P(RecordedSample, ReplaysThroughTheFuzzedHostToTheSameCalibration) {
  const SampleRun recorded = RecordSampleRun(GetParam());
  ASSERT_TRUE(recorded.messages.empty()) << recorded.messages.front().text;
  ASSERT_TRUE(recorded.calibrated);

  ResetSharedState();
  g_sPluginFolder = std::string(OMBRELAY_SHIPPED_APPDIR) + "/plugins";
  FuzzedBus bus(recorded.replies);
  VirtualPlatform platform(bus.clock);
  {
    NBCal panel(bus.host, platform);
    panel.UserControl_Show();
    ScanAndCalibrate(panel);
    EXPECT_TRUE(panel.imgCalDoneBox.Visible);
  }
  ResetSharedState();
  EXPECT_TRUE(platform.Messages().empty()) << platform.Messages().front().text;
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, RecordedSample, ::testing::ValuesIn(testing::kEveryFamily),
                         testing::FamilyTestName);

}  // namespace
}  // namespace ombrelay::fuzz
