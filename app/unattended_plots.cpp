#include "app/unattended_plots.h"

#include <QDoubleSpinBox>
#include <QSpinBox>
#include <QTimer>
#include <QWidget>

#include "app/unattended_calibration.h"

namespace ombrelay {
namespace {

constexpr int kLoadMa = -2000;
constexpr int kCellStepMv = 150;
constexpr double kTemperatureStep = 8.0;

template <typename Knob>
void Turn(QWidget& window, const char* name, const std::function<void(Knob&)>& turn) {
  if (auto* knob = window.findChild<Knob*>(name)) turn(*knob);
}

}  // namespace

void ScanWhileSourcesChange(QWidget& panel, int seconds, std::function<void()> done) {
  StartContinuousUpdates(panel);
  QWidget& window = *panel.window();
  const int quarterMs = seconds * 1000 / 4;
  QTimer::singleShot(quarterMs, &window, [&window] {
    Turn<QSpinBox>(window, "current", [](QSpinBox& knob) { knob.setValue(kLoadMa); });
  });
  QTimer::singleShot(2 * quarterMs, &window, [&window] {
    Turn<QSpinBox>(window, "cell2",
                   [](QSpinBox& knob) { knob.setValue(knob.value() + kCellStepMv); });
    Turn<QDoubleSpinBox>(window, "ts1", [](QDoubleSpinBox& knob) {
      knob.setValue(knob.value() + kTemperatureStep);
    });
  });
  QTimer::singleShot(3 * quarterMs, &window, [&window] {
    Turn<QSpinBox>(window, "current", [](QSpinBox& knob) { knob.setValue(0); });
  });
  QTimer::singleShot(seconds * 1000, &window, std::move(done));
}

}  // namespace ombrelay
