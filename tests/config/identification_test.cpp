#include "config/identification.h"

#include <gtest/gtest.h>

#include "config/device_configuration.h"
#include "shell/shared_state.h"
#include "tests/support/expected_trace.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

using testing::MatchesTrace;
using testing::SimBench;

TEST(ReadDeviceIdentification, WritesThreeBlocksThenSettlesThenReadsTheBlock) {
  struct Case {
    sim::Family family;
    const char* identity;
  };
  for (const Case c : {Case{sim::Family::Morlin, "4D31_2_05_1_0020"},
                       Case{sim::Family::KeldPlus, "4B60_1_10_5_0003"}}) {
    SimBench bench(c.family);
    EXPECT_EQ(ReadDeviceIdentification(23), c.identity);
    EXPECT_TRUE(MatchesTrace(bench.trace.Lines(), "identification/read-device-identification-" +
                                                      std::string(sim::FamilyName(c.family))));
    EXPECT_EQ(
        g_sDeviceNumber + "_" + g_sFirmwareVersion + "_" + g_sFirmwareType + "_" + g_sBuildNumber,
        c.identity);
  }
}

TEST(ReadDeviceIdentification, AnErrorDuringSettlingStartsTheCountAgain) {
  SimBench bench(sim::Family::Keld);
  int cleanChecks = 0;
  bench.afterOperation = [&](const BusOperation& operation) {
    if (operation.op == "CheckForError" && operation.status == 0 && ++cleanChecks == 3)
      bench.gauge->QueuePendingErrors(2);
  };
  EXPECT_EQ(ReadDeviceIdentification(23), "B12_1_07_2_0012");
  EXPECT_TRUE(MatchesTrace(bench.trace.Lines(), "identification/read-device-identification-keld"));
}

// Notes the length each block read is asked for, before the host answers.
class AskedLengths : public RecordingHost {
 public:
  using RecordingHost::RecordingHost;
  Status ReadSMBusBlock_(std::int32_t command, std::span<std::uint8_t> data, std::int16_t& length,
                         std::int16_t address) override {
    asked.push_back(length);
    return RecordingHost::ReadSMBusBlock_(command, data, length, address);
  }
  std::vector<std::int16_t> asked;
};

TEST(ReadDeviceIdentification, AsksForElevenBytes) {
  SimBench bench(sim::Family::KeldPlus);  // whose block is 13 bytes long
  AskedLengths host(bench.bus, [] { return 0; });
  g_oHost = &host;
  EXPECT_EQ(ReadDeviceIdentification(23), "4B60_1_10_5_0003");
  EXPECT_EQ(host.asked, std::vector<std::int16_t>{11});
}

TEST(ReadDeviceIdentification, ABlockThatMakesNoSenseOrFailsLeavesTheStringsAlone) {
  SimBench bench(sim::Family::Morlin);
  g_sDeviceNumber = "OLD";
  bench.gauge->SetIdentificationBlock({0x4B, 0x60, 1, 0x10, 0, 3, 0, 0, 0, 0, 2, 0, 5});
  EXPECT_EQ(ReadDeviceIdentification(23), "");
  bench.gauge->SetIdentificationBlock({0x4D, 0x31, 0x02, 0x05, 0x00, 0x20, 1, 0, 0, 0, 0});
  bench.gauge->FailNext(sim::Transfer::BlockRead, 1);
  EXPECT_EQ(ReadDeviceIdentification(23), "");
  EXPECT_EQ(g_sDeviceNumber, "OLD");
  EXPECT_TRUE(
      MatchesTrace(bench.trace.Lines(), "identification/read-device-identification-unidentified"));
}

TEST(CheckDeviceResponds, JudgesTheStateOfCharge) {
  SimBench bench(sim::Family::Morlin);
  bench.gauge->SetWord(0x0D, 100);
  EXPECT_EQ(CheckDeviceResponds(), 0);
  bench.gauge->SetWord(0x0D, 101);
  EXPECT_NE(CheckDeviceResponds(), 0);
  bench.gauge->SetWord(0x0D, 0xFFFF);  // -1 taken as signed
  EXPECT_EQ(CheckDeviceResponds(), 0);

  bench.gauge->FailNext(sim::Transfer::WordRead, 1);
  EXPECT_EQ(CheckDeviceResponds(), 0);
  bench.afterOperation = [&](const BusOperation& operation) {
    if (operation.cmd == 0x00) bench.gauge->FailNext(sim::Transfer::WordRead, 1);
  };
  const Status status = CheckDeviceResponds();
  EXPECT_NE(status, 0);
  EXPECT_EQ(status, bench.host.Operations().back().status);
  EXPECT_TRUE(MatchesTrace(bench.trace.Lines(), "identification/check-device-responds"));
}

TEST(LoadConfigurationforSecurityPanel, IdentifiesThenConfiguresTellingEachFailure) {
  SimBench bench(sim::Family::Morlin);
  LoadConfigurationforSecurityPanel();
  EXPECT_EQ(g_iDFType, MORLIN);
  EXPECT_TRUE(
      MatchesTrace(bench.trace.Lines(), "identification/security-panel-configuration-morlin"));

  SimBench unanswered(std::nullopt);
  LoadConfigurationforSecurityPanel();
  EXPECT_TRUE(MatchesTrace(unanswered.trace.Lines(),
                           "identification/security-panel-configuration-unanswered",
                           {{"appdir", OMBRELAY_SOURCE_APPDIR}}));
}

}  // namespace
}  // namespace ombrelay
