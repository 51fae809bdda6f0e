#include "app/unattended_calibration.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWidget>

namespace ombrelay {
namespace {

template <typename Widget>
Widget* Find(QWidget& panel, const QString& name) {
  return panel.findChild<Widget*>(name);
}

QString Indexed(const char* name, int index) {
  return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
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
  for (int row = 0; row < 4; ++row) {
    stack += applied.cellMv[static_cast<std::size_t>(row)];
    Type(Find<QLineEdit>(panel, Indexed("txtVoltage", row)), QString::number(stack));
  }
  Type(Find<QLineEdit>(panel, "txtBatVoltageActual"), QString::number(applied.batteryMv));
  Tick(Find<QCheckBox>(panel, "chkVoltageCal"));
  for (int row = 0; row < 5; ++row) {
    const QLineEdit* measured = Find<QLineEdit>(panel, Indexed("txtMeasTemp", row));
    if (measured == nullptr || measured->text().isEmpty()) continue;
    const double celsius = (applied.temperatures[static_cast<std::size_t>(row)] - 2732) / 10.0;
    Type(Find<QLineEdit>(panel, Indexed("txtActualTemp", row)), QString::number(celsius));
    Tick(Find<QCheckBox>(panel, Indexed("chkTemp", row)));
  }
  if (auto* calibrate = Find<QAbstractButton>(panel, "btnCalibrate")) calibrate->click();
}

}  // namespace ombrelay
