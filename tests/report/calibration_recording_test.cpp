// A press recorded for its report takes only what the bus log and the boxes gained while it ran,
// whatever they held before, and the entries of its own page.

#include "report/calibration_recording.h"

#include <gtest/gtest.h>

#include "tests/support/panel_bench.h"

namespace ombrelay {
namespace {

BusOperation Operation(const char* op, std::int32_t cmd, std::vector<std::uint8_t> data,
                       std::optional<std::uint16_t> word = std::nullopt) {
  BusOperation operation;
  operation.op = op;
  operation.cmd = cmd;
  operation.len = static_cast<std::int32_t>(data.size());
  operation.data = std::move(data);
  operation.word = word;
  return operation;
}

TEST(CalibrationRecorder, TakesOnlyWhatThePressAdded) {
  testing::PanelBench bench(sim::Family::Morlin);
  bench.StartUp();
  bench.panel.txtPackActualVoltage.Text = "11600";
  const auto selectFirstRow = Operation("WriteSMBusWord_", 0x00, {0x00, 0x01}, 0x0100);
  std::vector<BusOperation> operations = {selectFirstRow, Operation("WriteSMBusBlock", 0x2F, {9})};
  std::vector<ShownMessage> messages = {{"before the press", MessageStyle::Plain, ""}};

  CalibrationRecorder recorder(operations, messages);
  recorder.Pressing(bench.panel, CalibrationKind::PackVoltage);
  operations.insert(operations.end(), {selectFirstRow, Operation("ReadSMBusBlock_", 0x2F, {1, 2}),
                                       selectFirstRow, Operation("WriteSMBusBlock", 0x2F, {1, 3}),
                                       selectFirstRow, Operation("ReadSMBusBlock_", 0x2F, {1, 3})});
  messages.push_back({"during the press", MessageStyle::Error, "Calibration"});
  const CalibrationReport report = recorder.Pressed(bench.panel);

  EXPECT_EQ(report.calibration, "Pack voltage calibration");
  ASSERT_EQ(report.messages.size(), 1u);
  EXPECT_EQ(report.messages[0].text, "during the press");
  ASSERT_EQ(report.changes.size(), 1u);
  EXPECT_EQ(report.changes[0], (ChangedByte{"row 0", 1, 2, 3, 3, "Cell Scale 0"}));
  ASSERT_EQ(report.entered.size(), 1u);
  EXPECT_EQ(report.entered[0].control, "txtPackActualVoltage");
  EXPECT_EQ(report.entered[0].label, "Pack voltage, entered (mV)");
  EXPECT_EQ(report.entered[0].text, "11600");
  ASSERT_FALSE(report.shownBefore.empty());
  EXPECT_EQ(report.shownBefore[0].control, "txtCalMeasVoltage(0)");
  EXPECT_EQ(report.shownBefore[0].label, "Cell 1, measured (mV)");
  EXPECT_EQ(report.family, "MORLIN");
  EXPECT_FALSE(report.done);
}

}  // namespace
}  // namespace ombrelay
