#include "app/bench_sources_dock.h"

#include <gtest/gtest.h>

#include <QDoubleSpinBox>
#include <QSpinBox>

#include "sim/clock.h"
#include "sim/sample_gauges.h"

namespace ombrelay {
namespace {

class BenchSourcesDockTest : public ::testing::Test {
 protected:
  template <typename Box>
  Box& Find(const char* name) {
    auto* box = dock.findChild<Box*>(name);
    EXPECT_NE(box, nullptr) << name;
    return *box;
  }
  QSpinBox& Knob(const char* name) { return Find<QSpinBox>(name); }
  QDoubleSpinBox& Thermometer(const char* name) { return Find<QDoubleSpinBox>(name); }

  sim::VirtualClock clock;
  std::unique_ptr<sim::Gauge> morlin = sim::MakeSampleGauge(sim::Family::Morlin, clock);
  std::unique_ptr<sim::Gauge> keld = sim::MakeSampleGauge(sim::Family::Keld, clock);
  BenchSourcesDock dock;
};

TEST_F(BenchSourcesDockTest, KnobsSetTheChosenGaugeAtOnce) {
  EXPECT_FALSE(Knob("cell1").isEnabled()) << "nothing to set without a gauge";
  dock.SetGauge(*morlin);
  const sim::Measurements before = morlin->AppliedMeasurements();
  EXPECT_EQ(Knob("cell2").value(), before.cellMv[1]);
  EXPECT_EQ(Knob("pack").value(), before.packMv);
  EXPECT_EQ(Thermometer("internal").value(), 25.3) << "2985 tenths of a kelvin";
  EXPECT_EQ(morlin->AppliedMeasurements(), before) << "showing the gauge changes nothing";

  const char* const cells[] = {"cell1", "cell2", "cell3", "cell4"};
  for (int i = 0; i < 4; ++i)
    Knob(cells[i]).setValue(3600 + 10 * i);
  Knob("battery").setValue(14460);
  Knob("pack").setValue(14440);
  Knob("current").setValue(-2000);
  Thermometer("internal").setValue(-10.0);
  Thermometer("ts1").setValue(30.5);
  Thermometer("ts4").setValue(85.0);

  sim::Measurements expected = before;
  expected.cellMv = {3600, 3610, 3620, 3630};
  expected.batteryMv = 14460;
  expected.packMv = 14440;
  expected.currentMa = -2000;
  expected.temperatures[sim::Measurements::kInternal] = 2632;
  expected.temperatures[sim::Measurements::kTS1] = 3037;
  expected.temperatures[sim::Measurements::kTS4] = 3582;
  EXPECT_EQ(morlin->AppliedMeasurements(), expected);

  // Another gauge on the bus: the dock shows its values and sets it alone from then on.
  const sim::Measurements keldBefore = keld->AppliedMeasurements();
  dock.SetGauge(*keld);
  EXPECT_EQ(Knob("cell1").value(), keldBefore.cellMv[0]);
  EXPECT_EQ(Knob("current").value(), keldBefore.currentMa);
  EXPECT_EQ(keld->AppliedMeasurements(), keldBefore);
  Knob("cell1").setValue(4100);
  EXPECT_EQ(keld->AppliedMeasurements().cellMv[0], 4100);
  EXPECT_EQ(morlin->AppliedMeasurements(), expected);
}

}  // namespace
}  // namespace ombrelay
