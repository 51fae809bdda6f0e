#include "app/bench_sources_dock.h"

#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QSpinBox>
#include <QVBoxLayout>
#include <cmath>

#include "sim/gauge.h"

namespace ombrelay {
namespace {

// The gauge counts temperatures in tenths of a kelvin from this value for 0 degrees C.
constexpr int kZeroCelsius = 2732;
// A bench supply for a stack of up to four cells, and a load of up to 20 A either way.
constexpr int kMaxCellMv = 5000;
constexpr int kMaxStackMv = 25000;
constexpr int kVoltageStepMv = 10;
constexpr int kMaxCurrentMa = 20000;
constexpr int kCurrentStepMa = 100;
// What a climate chamber reaches.
constexpr double kMinCelsius = -40.0;
constexpr double kMaxCelsius = 125.0;
constexpr double kCelsiusStep = 0.5;

constexpr std::array<sim::Measurements::Sensor, 5> kSensors = {
    sim::Measurements::kInternal, sim::Measurements::kTS1, sim::Measurements::kTS2,
    sim::Measurements::kTS3, sim::Measurements::kTS4};

double ToCelsius(std::uint16_t tenthsKelvin) {
  return (tenthsKelvin - kZeroCelsius) / 10.0;
}

std::uint16_t ToTenthsKelvin(double celsius) {
  return static_cast<std::uint16_t>(std::lround(celsius * 10.0) + kZeroCelsius);
}

}  // namespace

template <typename Box, typename Value>
Box* BenchSourcesDock::AddSource(QFormLayout& form, const QString& label, const QString& name,
                                 Value minimum, Value maximum, Value step, const QString& unit) {
  auto* box = new Box(form.parentWidget());
  box->setObjectName(name);
  box->setRange(minimum, maximum);
  box->setSingleStep(step);
  box->setSuffix(" " + unit);
  // A typed value goes to the gauge when it is complete, not digit by digit.
  box->setKeyboardTracking(false);
  box->setEnabled(false);
  connect(box, &Box::valueChanged, this, &BenchSourcesDock::Apply);
  form.addRow(label, box);
  return box;
}

BenchSourcesDock::BenchSourcesDock(QWidget* parent) : QDockWidget("Bench sources", parent) {
  setObjectName("benchSources");
  setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
  auto* contents = new QWidget(this);
  auto* column = new QVBoxLayout(contents);

  auto* supply = new QGroupBox("Supply and load", contents);
  auto* supplyForm = new QFormLayout(supply);
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    cells_[i] = AddSource<QSpinBox>(*supplyForm, QStringLiteral("Cell %1").arg(i + 1),
                                    QStringLiteral("cell%1").arg(i + 1), 0, kMaxCellMv,
                                    kVoltageStepMv, "mV");
  }
  battery_ =
      AddSource<QSpinBox>(*supplyForm, "Battery", "battery", 0, kMaxStackMv, kVoltageStepMv, "mV");
  pack_ = AddSource<QSpinBox>(*supplyForm, "Pack", "pack", 0, kMaxStackMv, kVoltageStepMv, "mV");
  current_ = AddSource<QSpinBox>(*supplyForm, "Current", "current", -kMaxCurrentMa, kMaxCurrentMa,
                                 kCurrentStepMa, "mA");
  column->addWidget(supply);

  auto* thermometer = new QGroupBox("Temperatures", contents);
  auto* thermometerForm = new QFormLayout(thermometer);
  const std::array<const char*, 5> labels = {"Internal", "TS1", "TS2", "TS3", "TS4"};
  const std::array<const char*, 5> names = {"internal", "ts1", "ts2", "ts3", "ts4"};
  for (std::size_t i = 0; i < temperatures_.size(); ++i) {
    temperatures_[i] =
        AddSource<QDoubleSpinBox>(*thermometerForm, labels[i], names[i], kMinCelsius, kMaxCelsius,
                                  kCelsiusStep, QStringLiteral("\u00B0C"));
    temperatures_[i]->setDecimals(1);
  }
  column->addWidget(thermometer);
  column->addStretch();
  setWidget(contents);
}

void BenchSourcesDock::SetGauge(sim::Gauge& gauge) {
  // Showing the gauge's values is not a change to apply.
  gauge_ = nullptr;
  const sim::Measurements& applied = gauge.AppliedMeasurements();
  for (std::size_t i = 0; i < cells_.size(); ++i)
    cells_[i]->setValue(applied.cellMv[i]);
  battery_->setValue(applied.batteryMv);
  pack_->setValue(applied.packMv);
  current_->setValue(applied.currentMa);
  for (std::size_t i = 0; i < temperatures_.size(); ++i)
    temperatures_[i]->setValue(ToCelsius(applied.temperatures[kSensors[i]]));
  for (QWidget* box : findChildren<QAbstractSpinBox*>())
    box->setEnabled(true);
  gauge_ = &gauge;
}

void BenchSourcesDock::Apply() {
  if (gauge_ == nullptr) return;
  // Sensors the dock does not show keep what the gauge has.
  sim::Measurements measurements = gauge_->AppliedMeasurements();
  for (std::size_t i = 0; i < cells_.size(); ++i)
    measurements.cellMv[i] = static_cast<std::uint16_t>(cells_[i]->value());
  measurements.batteryMv = static_cast<std::uint16_t>(battery_->value());
  measurements.packMv = static_cast<std::uint16_t>(pack_->value());
  measurements.currentMa = static_cast<std::int16_t>(current_->value());
  for (std::size_t i = 0; i < temperatures_.size(); ++i)
    measurements.temperatures[kSensors[i]] = ToTenthsKelvin(temperatures_[i]->value());
  gauge_->ApplyMeasurements(measurements);
}

}  // namespace ombrelay
