// Every flow of both panels on an emulated /dev/i2c bus, through the real I2cDevHost, libi2c and
// the kernel's ioctls, on every family and on buses with and without SMBus block reads and PEC:
// the whole trace (bus, waits, boxes, panel state), every byte read and written, and the
// dataflash afterwards are those of the same flows on the simulator directly.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <tuple>

#include "hosts/i2c_dev_host.h"
#include "security/auth_morlin.h"
#include "tests/support/emulated_bus_host.h"
#include "tests/support/panel_bench.h"
#include "tests/support/security_bench.h"

namespace ombrelay {
namespace {

using testing::Go;
using testing::kNewUnsealKey;
using testing::PanelBench;

// The whole dataflash of every sample, and some way past it.
constexpr std::size_t kDataflashBytes = 0x4000;

// Every operation as its JSON line, with the bytes that came back and the time it was made.
std::vector<std::string> Lines(const std::vector<BusOperation>& operations) {
  std::vector<std::string> lines;
  for (const BusOperation& operation : operations)
    lines.push_back(ToJson(operation).dump());
  return lines;
}

// Start-up, the scan, every calibration and every security operation, one after the other on
// one gauge as an engineer runs them. Whether each calibration's done-mark showed after its
// press.
std::vector<bool> RunEveryFlow(PanelBench& bench) {
  // The errors the sample leaves pending after an identification request are the simulated
  // adapter's own; the kernel's interface has no such queue.
  bench.sim.gauge->SetIdentificationRequestErrors(0);
  NBCal& panel = bench.panel;
  panel.UserControl_Show();
  panel.chkUpdates.Value = 1;
  panel.tmrScan_Timer();
  bench.TypeWhatTheBenchApplies();
  std::vector<bool> done;
  panel.btnCalibrate_Click();
  done.push_back(panel.imgCalDoneBox.Visible);

  bench.ApplyCurrent(0);
  panel.btnCalCCCounter_Click();
  done.push_back(panel.imageCCOffsetDone.Visible);
  // QUILL reads its calibration table at start-up only.
  if (bench.sim.gauge->GetFamily() == sim::Family::Quill) {
    panel.UserControl_Show();
    panel.chkUpdates.Value = 1;
  }
  panel.btnBoardOffset_Click();
  done.push_back(panel.ImgBoardOffset.Visible);
  bench.ApplyCurrent(-2000);
  panel.txtActualCurrent.Text = "-2000";
  panel.btnPackCurrent_Click();
  done.push_back(panel.ImgPackCurrent.Visible);
  panel.txtPackActualVoltage.Text = std::to_string(bench.sim.gauge->AppliedMeasurements().packMv);
  panel.btnPackVoltage_Click();
  done.push_back(panel.imgPackVoltage.Visible);
  panel.tmrScan.SetEnabled(false);

  AuthMorlin security(bench.sim.host, bench.sim.platform);
  security.UserControl_Show();
  Go(security, 0);
  Go(security, 1);
  Go(security, 2);
  security.btnAuthenticate_Click();
  security.txtUnsealKeyNew.Text = kNewUnsealKey;
  security.Change_Unseal_Key_Click();
  return done;
}

using Case = std::tuple<sim::Family, testing::EmulatedBusKind>;

class EmulatedBusFlows : public ::testing::TestWithParam<Case> {};

TEST_P(EmulatedBusFlows, AreTheFlowsOnTheSimulator) {
  const auto [family, kind] = GetParam();
  PanelBench direct(family);
  EXPECT_EQ(RunEveryFlow(direct), std::vector<bool>(5, true));
  ASSERT_TRUE(direct.sim.MessageTexts().empty()) << direct.sim.MessageTexts().front();

  PanelBench overBus(family);
  testing::EmulatedBusHost bus(overBus.sim, kind);
  RunEveryFlow(overBus);

  EXPECT_EQ(overBus.Trace(), direct.Trace());
  EXPECT_EQ(Lines(overBus.sim.host.Operations()), Lines(direct.sim.host.Operations()));
  EXPECT_EQ(overBus.sim.gauge->DataflashBytes(0, kDataflashBytes),
            direct.sim.gauge->DataflashBytes(0, kDataflashBytes));
  EXPECT_EQ(overBus.sim.gauge->GetSecurityMode(), sim::SecurityMode::FullAccess);
  EXPECT_EQ(bus.Failures(), std::vector<std::string>{});
  // Each transfer of the host went over the emulated bus as one transfer of the kernel's.
  const auto transfers = std::ranges::count_if(overBus.sim.host.Operations(), [](const auto& op) {
    return op.op != "CheckForError" && op.op != "Delay";
  });
  EXPECT_EQ(bus.Adapter().Transfers(), static_cast<std::uint64_t>(transfers));
}

INSTANTIATE_TEST_SUITE_P(EveryFamilyAndBus, EmulatedBusFlows,
                         ::testing::Combine(::testing::ValuesIn(testing::kEveryFamily),
                                            ::testing::ValuesIn(testing::kEveryWorkingBusKind)),
                         [](const ::testing::TestParamInfo<Case>& param) {
                           return testing::Name(std::get<0>(param.param)) + "_" +
                                  testing::EmulatedBusKindName(std::get<1>(param.param));
                         });

}  // namespace
}  // namespace ombrelay
