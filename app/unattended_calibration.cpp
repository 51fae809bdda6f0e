#include "app/unattended_calibration.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSpinBox>
#include <QTabBar>
#include <QTimer>
#include <QWidget>

#include "shell/controls.h"

namespace ombrelay {
namespace {

template <typename Widget>
Widget* Find(QWidget& panel, const std::string& name) {
  return panel.findChild<Widget*>(QString::fromStdString(name));
}

// Replaces the box's text key by key, so that the panel hears it as typing.
void Type(QLineEdit* box, const QString& text) {
  if (box == nullptr || !box->isEnabled() || !box->isVisible()) return;
  box->setFocus();
  box->selectAll();
  QKeyEvent erase(QEvent::KeyPress, Qt::Key_Backspace, Qt::NoModifier);
  QApplication::sendEvent(box, &erase);
  for (const QChar c : text) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
    QApplication::sendEvent(box, &press);
  }
}

void Tick(QCheckBox* box) {
  if (box != nullptr && box->isEnabled() && box->isVisible() && !box->isChecked()) box->click();
}

void Press(QWidget& panel, const char* name) {
  auto* button = Find<QAbstractButton>(panel, name);
  if (button != nullptr && button->isEnabled() && button->isVisible()) button->click();
}

// As a click on the panel's tab would: the panel hears of the tab it left.
void ShowPage(QWidget& panel, int page) {
  if (auto* tabs = Find<QTabBar>(panel, "SStabCal")) tabs->setCurrentIndex(page);
}

void WaitForScan() {
  QEventLoop scan;
  QTimer::singleShot(kAfterOneScanMs, &scan, &QEventLoop::quit);
  scan.exec();
}

// Turns the bench sources dock's current knob to currentMa, and waits for the scan to show it.
void ApplyCurrent(QWidget& panel, int currentMa) {
  if (auto* knob = panel.window()->findChild<QSpinBox*>("current")) knob->setValue(currentMa);
  WaitForScan();
}

bool MarkShown(QWidget& panel, const char* name) {
  const auto* mark = Find<QWidget>(panel, name);
  return mark != nullptr && !mark->isHidden();
}

// The load the current page asks for: a discharge of 2 A.
constexpr int kCalibrationCurrentMa = -2000;

}  // namespace

void StartContinuousUpdates(QWidget& panel) {
  auto* updates = Find<QCheckBox>(panel, "chkUpdates");
  if (updates == nullptr) return;
  // Into the panel first, and let the focus arrive: entering it puts back the updates it had
  // when the focus left.
  panel.window()->activateWindow();
  updates->setFocus();
  QApplication::processEvents();
  Tick(updates);
}

void CalibrateAsTheBenchApplies(QWidget& panel, const sim::Measurements& applied) {
  int stack = 0;
  for (std::size_t row = 0; row < 4; ++row) {
    stack += applied.cellMv[row];
    Type(Find<QLineEdit>(panel, IndexedName("txtVoltage", row)), QString::number(stack));
  }
  Type(Find<QLineEdit>(panel, "txtBatVoltageActual"), QString::number(applied.batteryMv));
  Tick(Find<QCheckBox>(panel, "chkVoltageCal"));
  for (std::size_t row = 0; row < 5; ++row) {
    const QLineEdit* measured = Find<QLineEdit>(panel, IndexedName("txtMeasTemp", row));
    if (measured == nullptr || measured->text().isEmpty()) continue;
    const double celsius = (applied.temperatures[row] - 2732) / 10.0;
    Type(Find<QLineEdit>(panel, IndexedName("txtActualTemp", row)), QString::number(celsius));
    Tick(Find<QCheckBox>(panel, IndexedName("chkTemp", row)));
  }
  Press(panel, "btnCalibrate");
}

bool CalibrateCurrentAsTheBenchApplies(QWidget& panel, const sim::Measurements& applied,
                                       bool showAnewBetweenOffsets) {
  ShowPage(panel, 1);
  ApplyCurrent(panel, 0);
  Press(panel, "btnCalCCCounter");
  if (showAnewBetweenOffsets) {
    // Start-up runs as an event once shown: done here, before the next button.
    panel.hide();
    panel.show();
    QApplication::processEvents();
    StartContinuousUpdates(panel);
    ShowPage(panel, 1);
  }
  Press(panel, "btnBoardOffset");
  ApplyCurrent(panel, kCalibrationCurrentMa);
  Type(Find<QLineEdit>(panel, "txtActualCurrent"), QString::number(applied.currentMa));
  Press(panel, "btnPackCurrent");
  ShowPage(panel, 0);
  Type(Find<QLineEdit>(panel, "txtPackActualVoltage"), QString::number(applied.packMv));
  Press(panel, "btnPackVoltage");
  // The next scan shows the calibrated pack voltage.
  WaitForScan();
  return MarkShown(panel, "imageCCOffsetDone") && MarkShown(panel, "ImgBoardOffset") &&
         MarkShown(panel, "ImgPackCurrent") && MarkShown(panel, "imgPackVoltage");
}

}  // namespace ombrelay
