#include "tests/support/panel_bench.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"
#include "tests/support/panel_probe.h"

namespace ombrelay::testing {

PanelBench::PanelBench(std::optional<sim::Family> family, const std::string& appdir)
    : sim(family, appdir), panel(sim.host, sim.platform) {
  sim.trace.Watch(PanelProbe(panel));
}

void PanelBench::StartUp() {
  panel.UserControl_Show();
  EXPECT_TRUE(sim.MessageTexts().empty()) << sim.MessageTexts().front();
  sim.Restart();
}

void PanelBench::ReadyToCalibrate() {
  panel.UserControl_Show();
  EXPECT_TRUE(sim.MessageTexts().empty()) << sim.MessageTexts().front();
  panel.chkUpdates.Value = 1;
  panel.tmrScan_Timer();
  TypeWhatTheBenchApplies();
  sim.Restart();
}

void PanelBench::TypeWhatTheBenchApplies() {
  const sim::Measurements applied = sim.gauge->AppliedMeasurements();
  int stack = 0;
  for (std::size_t cell = 0; cell < static_cast<std::size_t>(g_iNumCells); ++cell)
    panel.txtVoltage[cell].Text = std::to_string(stack += applied.cellMv[cell]);
  panel.chkVoltageCal.Value = 1;
  panel.txtBatVoltageActual.Text = std::to_string(applied.batteryMv);
  // The samples' sensors that the scan fills: KELD_PLUS does not refresh its internal one, and
  // KELD and QUILL do not calibrate it.
  const bool internal = sim.gauge->GetFamily() == sim::Family::Morlin;
  for (const std::size_t row :
       internal ? std::vector<std::size_t>{0, 1, 2} : std::vector<std::size_t>{1, 2}) {
    panel.chkTemp[row].Value = 1;
    panel.txtActualTemp[row].Text = "25";
  }
}

void PanelBench::ApplyCurrent(std::int16_t currentMa) {
  sim::Measurements applied = sim.gauge->AppliedMeasurements();
  applied.currentMa = currentMa;
  sim.gauge->ApplyMeasurements(applied);
  panel.tmrScan_Timer();
}

}  // namespace ombrelay::testing
