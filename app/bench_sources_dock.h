#pragma once
// The bench's sources: what a power supply, a load and a thermometer apply to the simulated
// gauge's inputs. Every change goes to the gauge at once, as turning a knob would.

#include <QDockWidget>
#include <array>

class QDoubleSpinBox;
class QFormLayout;
class QSpinBox;

namespace ombrelay {

namespace sim {
class Gauge;
}

class BenchSourcesDock : public QDockWidget {
 public:
  explicit BenchSourcesDock(QWidget* parent = nullptr);

  // Shows what gauge has applied now, and applies every later change to it alone.
  void SetGauge(sim::Gauge& gauge);

 private:
  // A knob in a row of form, disabled until there is a gauge to set.
  template <typename Box, typename Value>
  Box* AddSource(QFormLayout& form, const QString& label, const QString& name, Value minimum,
                 Value maximum, Value step, const QString& unit);
  void Apply();

  sim::Gauge* gauge_ = nullptr;
  std::array<QSpinBox*, 4> cells_{};
  QSpinBox* battery_ = nullptr;
  QSpinBox* pack_ = nullptr;
  // Internal, then TS1 to TS4.
  std::array<QDoubleSpinBox*, 5> temperatures_{};
  QSpinBox* current_ = nullptr;
};

}  // namespace ombrelay
