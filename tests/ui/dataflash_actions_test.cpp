// The bench's dataflash actions on a simulated MORLIN in real time: the boxes they tell their
// outcome in, the gauge's dataflash after them, and the comparison dialog.

#include "ui/dataflash_actions.h"

#include <gtest/gtest.h>

#include <QTableWidget>
#include <filesystem>
#include <sstream>

#include "hosts/sim_host.h"
#include "panel/run_event.h"
#include "shell/shared_state.h"
#include "sim/clock.h"
#include "sim/dataflash.h"
#include "sim/sample_gauges.h"
#include "tests/support/test_file.h"
#include "ui/comparison_dialog.h"
#include "ui/qt_platform.h"

namespace ombrelay {
namespace {

class DataflashActionsTest : public ::testing::Test {
 protected:
  DataflashActionsTest() {
    g_sPluginFolder = OMBRELAY_SOURCE_APPDIR "/plugins";
    platform.SetUnattended(true);
    host.Attach(gauge.get());
  }
  ~DataflashActionsTest() override {
    std::filesystem::remove(file.toStdString());
    ResetSharedState();
  }

  // The boxes shown since the last look.
  std::string Boxes() {
    std::string shown = log.str();
    log.str({});
    return shown;
  }

  sim::Bytes Dataflash() const { return gauge->DataflashBytes(0, sim::Dataflash::kSize); }

  std::ostringstream log;
  QtPlatform platform{log};
  sim::RealClock clock;
  std::unique_ptr<sim::Gauge> gauge = sim::MakeSampleGauge(sim::Family::Morlin, clock);
  SimHost host{clock};
  const QString file = QString::fromStdString(testing::TestFile("backup.json"));
};

TEST_F(DataflashActionsTest, BackupCompareRestoreTellTheirOutcomes) {
  const std::string path = file.toStdString();
  BackupDataflash(host, platform, file);
  EXPECT_EQ(Boxes(),
            "message: plain: Backed up 54 parameters of the MORLIN device 4D31, firmware 2_05, in "
            "rows 0, 2, 3, 4, 10, 11, 16, 17, 18, into " +
                path + ".\n");
  const sim::Bytes original = Dataflash();

  CompareDataflash(host, platform, file, nullptr);
  EXPECT_EQ(Boxes(), "message: plain: The gauge holds what " + path + " holds.\n");

  const std::uint8_t shutdown[] = {0x1B, 0x58};
  gauge->SetDataflashBytes(354, shutdown);
  gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  RestoreDataflash(host, platform, file);
  EXPECT_EQ(Boxes(),
            "message: error: The gauge is Sealed: a restore needs it Unsealed or in Full "
            "Access.\n");
  EXPECT_NE(Dataflash(), original);

  gauge->SetSecurityMode(sim::SecurityMode::Unsealed);
  RestoreDataflash(host, platform, file);
  EXPECT_EQ(Boxes(),
            "message: plain: Restored " + path + ": row 11 written, each read back the same.\n");
  EXPECT_EQ(Dataflash(), original);
  RestoreDataflash(host, platform, file);
  EXPECT_EQ(Boxes(), "message: plain: The gauge already holds what " + path +
                         " holds: nothing was written.\n");
}

TEST_F(DataflashActionsTest, NothingStartsWhileAPanelsHandlerRuns) {
  BackupDataflash(host, platform, file);
  Boxes();
  const std::uint8_t shutdown[] = {0x1B, 0x58};
  gauge->SetDataflashBytes(354, shutdown);
  const sim::Bytes changed = Dataflash();
  const std::int64_t before = clock.NowMs();
  RunEvent([&] { RestoreDataflash(host, platform, file); });
  EXPECT_EQ(Boxes(),
            "message: error: The panel is busy with the gauge. Try again once it has finished.\n");
  EXPECT_EQ(Dataflash(), changed);
  EXPECT_LT(clock.NowMs() - before, 500) << "not even the identification went out";
}

TEST(ComparisonDialog, ListsEachChangedParameterWithBothValues) {
  BackupComparison comparison;
  comparison.identity = "build 0020 -> 0021";
  comparison.parameters = {
      {"Calibration.Data.CC Gain",
       BackupParameter{"Calibration", "Data", "CC Gain", 12, "F4", {0x80, 0x70, 0, 0}, "0.938"},
       BackupParameter{"Calibration", "Data", "CC Gain", 12, "F4", {0x80, 0x70, 0, 1}, "0.938"}},
      {"Calibration.Data.Retired", std::nullopt,
       BackupParameter{"Calibration", "Data", "Retired", 40, "U1", {1}, "1"}}};
  comparison.rows = {0, 1};
  const ComparisonDialog dialog(comparison, "/tmp/backup.json");
  EXPECT_EQ(dialog.Summary().toStdString(),
            "Backup: /tmp/backup.json\nAnother kind of gauge: build 0020 -> 0021\nRows that "
            "differ: 0, 1");
  const QTableWidget& table = dialog.Parameters();
  std::vector<std::string> cells;
  for (int row = 0; row < table.rowCount(); ++row) {
    for (int column = 0; column < table.columnCount(); ++column)
      cells.push_back(table.item(row, column)->text().toStdString());
  }
  EXPECT_EQ(cells,
            (std::vector<std::string>{"Calibration.Data.CC Gain", "0.938 [80700000]",
                                      "0.938 [80700001]", "Calibration.Data.Retired", "—", "1"}));
}

}  // namespace
}  // namespace ombrelay
