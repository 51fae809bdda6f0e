#include "ui/calibration_panel.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTableWidget>
#include <QTest>
#include <sstream>

#include "app/plots_dock.h"
#include "hosts/sim_host.h"
#include "shell/shared_state.h"
#include "sim/clock.h"
#include "sim/sample_gauges.h"
#include "ui/qt_platform.h"

namespace ombrelay {
namespace {

// The panel in a window beside a box of its own, with nothing on the bus.
class CalibrationPanelTest : public ::testing::Test {
 protected:
  CalibrationPanelTest() {
    g_sPluginFolder = OMBRELAY_SOURCE_APPDIR "/plugins";
    g_oPlatform = &platform;
    platform.SetUnattended(true);
    platform.SetRefreshHook([this] { panel->Refresh(); });
    auto* row = new QHBoxLayout(&window);
    row->addWidget(panel);
    row->addWidget(outside);
  }
  ~CalibrationPanelTest() override { ResetSharedState(); }

  template <typename Widget>
  Widget& Find(const char* name) {
    auto* widget = panel->findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return *widget;
  }

  // Shows the window and waits for the panel's start-up to end.
  void ShowAndStart() {
    QSignalSpy finished(panel, &CalibrationPanel::startupFinished);
    window.show();
    ASSERT_TRUE(finished.wait(10000));
    EXPECT_EQ(finished.count(), 1);
  }

  sim::RealClock clock;
  SimHost host{clock};
  std::ostringstream log;
  QtPlatform platform{log};
  QWidget window;
  CalibrationPanel* panel = new CalibrationPanel(host, platform);
  QLineEdit* outside = new QLineEdit;
};

TEST_F(CalibrationPanelTest, ShowRunsStartupAndTheViewFollows) {
  const QLabel& version = Find<QLabel>("txtVersion");
  EXPECT_TRUE(version.text().isEmpty()) << "start-up has not run before the show";

  ShowAndStart();
  // The box's full text is the headless start-up's to check.
  EXPECT_EQ(log.str().rfind("message: error: Unable to communicate with device.  Please", 0), 0u);
  EXPECT_TRUE(version.text().startsWith("Version: "));
  EXPECT_TRUE(Find<QPushButton>("btnCalibrate").isEnabled());
  EXPECT_EQ(Find<QTabBar>("SStabCal").tabText(0), "Voltage and Temperature");

  // The pages stand where their twips put them, one of them shown.
  const auto& page0 = Find<QWidget>("picCalibration(0)");
  const auto& page1 = Find<QWidget>("picCalibration(1)");
  EXPECT_EQ(page0.geometry(), QRect(0, 30, 663, 613));
  EXPECT_TRUE(page0.isVisible());
  EXPECT_FALSE(page1.isVisible());
  EXPECT_EQ(Find<QLineEdit>("txtVoltage(3)").text(), "16000");
  EXPECT_EQ(Find<QLineEdit>("txtVoltage(3)").maxLength(), 5);
  EXPECT_TRUE(Find<QLineEdit>("txtCalMeasVoltage(0)").isReadOnly());
  EXPECT_FALSE(Find<QWidget>("imgCalDoneBox").isVisible());

  // The button reaches its handler, which finds nothing ticked.
  log.str({});
  Find<QPushButton>("btnCalibrate").click();
  EXPECT_EQ(log.str(),
            "message: plain: Voltage and Temperature calibration selected but no check boxes "
            "checked. There is nothing to do.\n");
  EXPECT_TRUE(Find<QPushButton>("btnCalibrate").isEnabled());

  // Every show runs start-up again.
  log.str({});
  QSignalSpy finished(panel, &CalibrationPanel::startupFinished);
  panel->hide();
  panel->show();
  ASSERT_TRUE(finished.wait(10000));
  EXPECT_NE(log.str().find("Unable to communicate with device."), std::string::npos);
}

TEST_F(CalibrationPanelTest, LeavingThePanelSetsContinuousUpdatesAside) {
  ShowAndStart();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QCheckBox& updates = Find<QCheckBox>("chkUpdates");
  Find<QLineEdit>("txtVoltage(0)").setFocus();
  updates.click();
  ASSERT_TRUE(updates.isChecked());

  outside->setFocus();
  EXPECT_FALSE(updates.isChecked());

  Find<QLineEdit>("txtActualTemp(1)").setFocus();
  EXPECT_TRUE(updates.isChecked());
}

TEST_F(CalibrationPanelTest, TheScanTimerIsDrivenAndTheViewFollowsEachTick) {
  ShowAndStart();
  NBCal& control = panel->Control();
  int ticks = 0;
  control.tmrScan.Tick = [&, scan = control.tmrScan.Tick] {
    if (scan) scan();
    control.txtCellCount.Text = std::to_string(++ticks);
  };
  control.tmrScan.SetInterval(10);
  control.tmrScan.SetEnabled(true);
  QTest::qWait(100);
  control.tmrScan.SetEnabled(false);
  EXPECT_GE(ticks, 3);
  EXPECT_EQ(Find<QLineEdit>("txtCellCount").text().toStdString(), std::to_string(ticks));
}

TEST_F(CalibrationPanelTest, MorlinStartupShowsBothGridsBesideThePages) {
  const std::unique_ptr<sim::Gauge> morlin = sim::MakeSampleGauge(sim::Family::Morlin, clock);
  host.Attach(morlin.get());
  ShowAndStart();
  const auto& modeGrid = Find<QTableWidget>("displaygrid");
  const auto& dataflashGrid = Find<QTableWidget>("DFGrid");
  EXPECT_TRUE(Find<QLabel>("lblCurrentValues").isVisible());
  ASSERT_TRUE(modeGrid.isVisible());
  ASSERT_TRUE(dataflashGrid.isVisible());
  // To the right of the pages, at 15 twips to the pixel.
  EXPECT_EQ(modeGrid.geometry(), QRect(667, 67, 187, 230));
  EXPECT_EQ(dataflashGrid.geometry(), QRect(667, 367, 187, 252));
  ASSERT_GE(modeGrid.rowCount(), 12);
  EXPECT_EQ(modeGrid.item(0, 0)->text(), "Parameter");
  EXPECT_EQ(modeGrid.item(1, 1)->text(), "----");
  EXPECT_TRUE(modeGrid.item(1, 0)->font().bold());
  ASSERT_GE(dataflashGrid.rowCount(), 3);
  EXPECT_EQ(dataflashGrid.item(0, 1)->text(), "Value");
  EXPECT_FALSE(dataflashGrid.item(1, 0)->text().isEmpty());
  EXPECT_FALSE(dataflashGrid.item(1, 1)->text().isEmpty()) << "read from the gauge's dataflash";
  EXPECT_EQ(Find<QLabel>("lblCalDF").pos(), QPoint(667, 333));
  // Every cell the grid's width holds is in view: no column is cut off by the table's frame.
  EXPECT_LE(dataflashGrid.columnViewportPosition(1) + dataflashGrid.columnWidth(1),
            dataflashGrid.viewport()->width());

  // A scan's new value, and the grid hidden again.
  NBCal& control = panel->Control();
  control.DFGrid.Cell(1, 1).Text = "-7188";
  control.displaygrid.Visible = false;
  panel->Refresh();
  EXPECT_EQ(dataflashGrid.item(1, 1)->text(), "-7188");
  EXPECT_FALSE(modeGrid.isVisible());
  host.Attach(nullptr);
}

// Each calibration button's press is reported with the boxes it showed, and nothing of the presses
// or scans before it.
TEST_F(CalibrationPanelTest, EachCalibrationPressIsReportedWithItsBoxes) {
  const std::unique_ptr<sim::Gauge> morlin = sim::MakeSampleGauge(sim::Family::Morlin, clock);
  host.Attach(morlin.get());
  ShowAndStart();
  std::vector<CalibrationReport> reports;
  panel->OnCalibrationReport([&](const CalibrationReport& report) { reports.push_back(report); });

  // Typed, as the panel hears only typing.
  const auto type = [&](const QString& text) {
    auto& entered = Find<QLineEdit>("txtPackActualVoltage");
    entered.selectAll();
    QTest::keyClick(&entered, Qt::Key_Backspace);
    QTest::keyClicks(&entered, text);
    Find<QPushButton>("btnPackVoltage").click();
  };
  type("100");
  type(QString::number(morlin->AppliedMeasurements().packMv));

  ASSERT_EQ(reports.size(), 2u);
  EXPECT_EQ(reports[0].calibration, "Pack voltage calibration");
  EXPECT_FALSE(reports[0].done);
  ASSERT_EQ(reports[0].messages.size(), 1u);
  EXPECT_EQ(reports[0].messages[0].text,
            "Pack Voltage entered appears low. Please enter a higher voltage.");
  EXPECT_TRUE(reports[0].changes.empty());
  EXPECT_EQ(reports[0].entered.at(0).text, "100");

  EXPECT_TRUE(reports[1].done);
  EXPECT_TRUE(reports[1].messages.empty()) << "the first press's box is not the second's";
  ASSERT_EQ(reports[1].changes.size(), 2u);
  EXPECT_EQ(reports[1].changes[0].parameter, "Pack Gain");
  EXPECT_EQ(reports[1].changes[0].readBack, reports[1].changes[0].written);
  EXPECT_EQ(reports[1].device, "4D31");
  host.Attach(nullptr);
}

// The plots read this panel's boxes by their names: a box renamed would leave a chart empty.
TEST_F(CalibrationPanelTest, PlotsDockSamplesWhatTheScanShowsWhileUpdatesAreOn) {
  const std::unique_ptr<sim::Gauge> quill = sim::MakeSampleGauge(sim::Family::Quill, clock);
  host.Attach(quill.get());
  ShowAndStart();
  PlotsDock dock;
  dock.Watch(*panel);
  dock.Sample();
  EXPECT_TRUE(dock.History().Samples().empty()) << "no samples while updates are off";

  Find<QCheckBox>("chkUpdates").click();
  // A tick now, rather than after the timer's two seconds.
  panel->Control().tmrScan_Timer();
  panel->Refresh();
  dock.Sample();
  const std::size_t sampled = dock.History().Samples().size();
  ASSERT_GE(sampled, 1u);
  const ScanSample sample = dock.History().Samples().back();
  const auto shown = [&](const char* name) { return Find<QLineEdit>(name).text().toDouble(); };
  // Three cells on this gauge: the fourth row is disabled and stays out.
  EXPECT_EQ(sample.values[1], shown("txtCalMeasVoltage(1)") - shown("txtCalMeasVoltage(0)"));
  EXPECT_EQ(sample.values[3], std::nullopt);
  EXPECT_EQ(sample.values[4], shown("txtCalMeasVoltage(2)"));
  EXPECT_EQ(sample.values[7], shown("txtMeasTemp(0)"));
  EXPECT_EQ(sample.values[12], shown("txtMeasuredCurrent"));

  // And on its own, once a second.
  QElapsedTimer waited;
  waited.start();
  while (dock.History().Samples().size() == sampled && waited.elapsed() < 2 * PlotsDock::kSampleMs)
    QTest::qWait(50);
  EXPECT_GT(dock.History().Samples().size(), sampled);

  const QString file = QDir::temp().filePath("ombrelay-plots-test.csv");
  QString error;
  ASSERT_TRUE(dock.ExportCsv(file, error)) << error.toStdString();
  QFile written(file);
  ASSERT_TRUE(written.open(QIODevice::ReadOnly));
  EXPECT_EQ(written.readAll().toStdString(), dock.History().ToCsv());
  written.remove();
  EXPECT_FALSE(dock.ExportCsv("/nonexistent/folder/scan.csv", error));
  EXPECT_TRUE(error.startsWith("Cannot write /nonexistent/folder/scan.csv: "))
      << error.toStdString();
  host.Attach(nullptr);
}

}  // namespace
}  // namespace ombrelay
