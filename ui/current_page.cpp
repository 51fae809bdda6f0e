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

// A calibration button with its done-mark beside it.
QLayout* MakeButtonRow(QPushButton* button, DoneMark* mark) {
  auto* row = new QHBoxLayout;
  row->addWidget(button);
  row->addWidget(mark);
  row->addStretch();
  return row;
}

// The two offset frames: a hint and a button each.
QGroupBox* MakeOffsetFrame(QGroupBox* frame, QLabel* help, QPushButton* button, DoneMark* mark) {
  auto* column = new QVBoxLayout(frame);
  column->addWidget(help);
  column->addLayout(MakeButtonRow(button, mark));
  return frame;
}

QGroupBox* MakeCurrentFrame(NBCal& panel, WidgetFactory& make, const CalibrationPress& press) {
  QGroupBox* frame = make.MakeFrame(panel.frmCurrentCal, "frmCurrentCal");
  auto* column = new QVBoxLayout(frame);
  column->addWidget(make.MakeParagraph(panel.lblCurrentCal, "lblCurrentCal"));

  auto* grid = new QGridLayout;
  grid->addWidget(make.MakeHeading(panel.lblCurrentEnteredHeading, "lblCurrentEnteredHeading"), 0,
                  0);
  grid->addWidget(make.MakeHeading(panel.lblCurrentMeasuredHeading, "lblCurrentMeasuredHeading"), 0,
                  1);
  grid->addWidget(make.MakeTextBox(panel.txtActualCurrent, "txtActualCurrent"), 1, 0,
                  Qt::AlignHCenter);
  grid->addWidget(make.MakeTextBox(panel.txtMeasuredCurrent, "txtMeasuredCurrent"), 1, 1,
                  Qt::AlignHCenter);
  grid->setColumnStretch(2, 1);
  column->addLayout(grid);
  column->addLayout(MakeButtonRow(make.MakeButton(panel.btnPackCurrent, "btnPackCurrent",
                                                  [press] { press(CalibrationKind::Current); }),
                                  make.MakeDoneMark(panel.ImgPackCurrent, "ImgPackCurrent")));
  return frame;
}

}  // namespace

QWidget* MakeCurrentPage(NBCal& panel, WidgetFactory& make, const CalibrationPress& press) {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  auto* top = new QHBoxLayout;
  top->addWidget(
      make.MakeButton(panel.btncalpage2, "btncalpage2", [&panel] { panel.btncalpage2_Click(); }));
  top->addStretch();
  column->addLayout(top);

  auto* offsets = new QHBoxLayout;
  offsets->addWidget(
      MakeOffsetFrame(make.MakeFrame(panel.frmCCOffset, "frmCCOffset"),
                      make.MakeParagraph(panel.lblHelp[1], Indexed("lblHelp", 1)),
                      make.MakeButton(panel.btnCalCCCounter, "btnCalCCCounter",
                                      [press] { press(CalibrationKind::CcOffset); }),
                      make.MakeDoneMark(panel.imageCCOffsetDone, "imageCCOffsetDone")));
  offsets->addWidget(
      MakeOffsetFrame(make.MakeFrame(panel.frmBoardOffset, "frmBoardOffset"),
                      make.MakeParagraph(panel.lblHelp[2], Indexed("lblHelp", 2)),
                      make.MakeButton(panel.btnBoardOffset, "btnBoardOffset",
                                      [press] { press(CalibrationKind::BoardOffset); }),
                      make.MakeDoneMark(panel.ImgBoardOffset, "ImgBoardOffset")));
  column->addLayout(offsets);
  column->addWidget(MakeCurrentFrame(panel, make, press));
  column->addWidget(make.MakeParagraph(panel.lblScanWarning[1], Indexed("lblScanWarning", 1)));
  column->addStretch();
  return page;
}

}  // namespace ombrelay
