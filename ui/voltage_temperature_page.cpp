#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "panel/nbcal.h"
#include "ui/calibration_pages.h"
#include "ui/done_mark.h"
#include "ui/widget_factory.h"

namespace ombrelay {
namespace {

// Columns of the entry grids: row label, entered value and its unit, measured value and its
// unit.
// The page is just wide enough for the voltages and temperatures side by side.
constexpr int kPageMargin = 4;

enum Column { kRowLabel, kEntered, kEnteredUnit, kMeasured, kMeasuredUnit };

// A grid of rows under the headings of the entered and the measured column.
QGridLayout* MakeEntryGrid(QLabel* entered, QLabel* measured) {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(4);
  grid->addWidget(entered, 0, kEntered, 1, 2);
  grid->addWidget(measured, 0, kMeasured, 1, 2);
  return grid;
}

QLayout* MakeVoltageRows(NBCal& panel, WidgetFactory& make) {
  QGridLayout* grid =
      MakeEntryGrid(make.MakeHeading(panel.lblVoltageEnteredHeading, "lblVoltageEnteredHeading"),
                    make.MakeHeading(panel.lblVoltageMeasuredHeading, "lblVoltageMeasuredHeading"));
  for (std::size_t i = 0; i < panel.txtVoltage.size(); ++i) {
    const int row = static_cast<int>(i) + 1;
    grid->addWidget(make.MakeLabel(panel.Label1[i], Indexed("Label1", i)), row, kRowLabel);
    grid->addWidget(make.MakeTextBox(panel.txtVoltage[i], Indexed("txtVoltage", i)), row, kEntered);
    grid->addWidget(make.MakeTextBox(panel.txtCalMeasVoltage[i], Indexed("txtCalMeasVoltage", i)),
                    row, kMeasured);
  }
  const int lastCell = static_cast<int>(panel.txtVoltage.size());
  grid->addWidget(make.MakeLabel(panel.lblCalibration.at(19), Indexed("lblCalibration", 19)),
                  lastCell, kEnteredUnit);
  grid->addWidget(make.MakeLabel(panel.lblCalibration.at(22), Indexed("lblCalibration", 22)),
                  lastCell, kMeasuredUnit);

  const int battery = lastCell + 1;
  grid->addWidget(make.MakeLabel(panel.lblBatVoltage.at(4), Indexed("lblBatVoltage", 4)), battery,
                  kRowLabel);
  grid->addWidget(make.MakeTextBox(panel.txtBatVoltageActual, "txtBatVoltageActual"), battery,
                  kEntered);
  grid->addWidget(make.MakeLabel(panel.lblCalibration.at(26), Indexed("lblCalibration", 26)),
                  battery, kEnteredUnit);
  grid->addWidget(make.MakeTextBox(panel.txtBatMeasured, "txtBatMeasured"), battery, kMeasured);
  grid->addWidget(make.MakeLabel(panel.lblCalibrationBat, "lblCalibrationBat"), battery,
                  kMeasuredUnit);

  const int cellCount = battery + 1;
  grid->addWidget(make.MakeLabel(panel.lblCellCountHeading, "lblCellCountHeading"), cellCount,
                  kRowLabel);
  grid->addWidget(make.MakeTextBox(panel.txtCellCount, "txtCellCount"), cellCount, kEntered);
  return grid;
}

QGroupBox* MakeTemperatureFrame(NBCal& panel, WidgetFactory& make) {
  QGroupBox* frame = make.MakeFrame(panel.Frame1, "Frame1");
  QGridLayout* grid =
      MakeEntryGrid(make.MakeHeading(panel.lblTempEnteredHeading, "lblTempEnteredHeading"),
                    make.MakeHeading(panel.lblTempMeasuredHeading, "lblTempMeasuredHeading"));
  frame->setLayout(grid);
  const std::size_t sensors = panel.chkTemp.size();
  for (std::size_t i = 0; i < sensors; ++i) {
    const int row = static_cast<int>(i) + 1;
    grid->addWidget(make.MakeCheckBox(panel.chkTemp[i], Indexed("chkTemp", i)), row, kRowLabel);
    grid->addWidget(make.MakeTextBox(panel.txtActualTemp[i], Indexed("txtActualTemp", i)), row,
                    kEntered);
    grid->addWidget(
        make.MakeLabel(panel.lbldegCmeasured[i + sensors], Indexed("lbldegCmeasured", i + sensors)),
        row, kEnteredUnit);
    grid->addWidget(make.MakeTextBox(panel.txtMeasTemp[i], Indexed("txtMeasTemp", i)), row,
                    kMeasured);
    grid->addWidget(make.MakeLabel(panel.lbldegCmeasured[i], Indexed("lbldegCmeasured", i)), row,
                    kMeasuredUnit);
  }
  grid->setRowStretch(static_cast<int>(sensors) + 1, 1);
  return frame;
}

QGroupBox* MakeVoltageTemperatureFrame(NBCal& panel, WidgetFactory& make,
                                       const CalibrationPress& press) {
  QGroupBox* frame = make.MakeFrame(panel.frmVoltTemp, "frmVoltTemp");
  auto* column = new QVBoxLayout(frame);
  column->addWidget(make.MakeParagraph(panel.lblVTCalibration, "lblVTCalibration"));
  column->addWidget(make.MakeParagraph(panel.lblHelp[0], Indexed("lblHelp", 0)));

  auto* voltages = new QVBoxLayout;
  voltages->addWidget(make.MakeCheckBox(panel.chkVoltageCal, "chkVoltageCal"));
  voltages->addLayout(MakeVoltageRows(panel, make));
  voltages->addStretch();
  auto* sections = new QHBoxLayout;
  sections->addLayout(voltages);
  sections->addWidget(MakeTemperatureFrame(panel, make), 1);
  column->addLayout(sections);

  auto* calibrate = new QHBoxLayout;
  calibrate->addWidget(make.MakeButton(panel.btnCalibrate, "btnCalibrate",
                                       [press] { press(CalibrationKind::VoltageTemperature); }));
  calibrate->addWidget(make.MakeDoneMark(panel.imgCalDoneBox, "imgCalDoneBox"));
  calibrate->addStretch();
  column->addLayout(calibrate);
  return frame;
}

QGroupBox* MakePackFrame(NBCal& panel, WidgetFactory& make, const CalibrationPress& press) {
  QGroupBox* frame = make.MakeFrame(panel.frmPackCal, "frmPackCal");
  QGridLayout* grid =
      MakeEntryGrid(make.MakeHeading(panel.lblPackEnteredHeading, "lblPackEnteredHeading"),
                    make.MakeHeading(panel.lblPackMeasuredHeading, "lblPackMeasuredHeading"));
  frame->setLayout(grid);
  grid->addWidget(make.MakeTextBox(panel.txtPackActualVoltage, "txtPackActualVoltage"), 1,
                  kEntered);
  grid->addWidget(make.MakeTextBox(panel.txtPackMeasured, "txtPackMeasured"), 1, kMeasured);
  grid->addWidget(make.MakeButton(panel.btnPackVoltage, "btnPackVoltage",
                                  [press] { press(CalibrationKind::PackVoltage); }),
                  1, kMeasuredUnit + 1);
  grid->addWidget(make.MakeDoneMark(panel.imgPackVoltage, "imgPackVoltage"), 1, kMeasuredUnit + 2);
  grid->setColumnStretch(kMeasuredUnit + 3, 1);
  return frame;
}

}  // namespace

QWidget* MakeVoltageTemperaturePage(NBCal& panel, WidgetFactory& make,
                                    const CalibrationPress& press) {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, kPageMargin);
  column->addWidget(MakeVoltageTemperatureFrame(panel, make, press));
  column->addWidget(MakePackFrame(panel, make, press));
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(
      make.MakeButton(panel.btncalpg1, "btncalpg1", [&panel] { panel.btncalpg1_Click(); }));
  bottom->addStretch();
  column->addLayout(bottom);
  column->addWidget(make.MakeParagraph(panel.lblScanWarning[0], Indexed("lblScanWarning", 0)));
  column->addStretch();
  return page;
}

}  // namespace ombrelay
