#include "bench/campaign_flows.h"

#include "gauge/measurement_reads.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "tests/support/panel_probe.h"

namespace ombrelay {
namespace {

using testing::PanelBench;

std::string Mark(const Picture& mark) {
  return mark.Visible ? "done" : "not done";
}

// The values the scan fills, as the panel shows them.
std::string ShownValues(NBCal& panel) {
  std::string shown;
  for (const TextBox& box : panel.txtCalMeasVoltage)
    shown += box.Text + ";";
  for (const TextBox& box : panel.txtMeasTemp)
    shown += box.Text + ";";
  return shown + panel.txtMeasuredCurrent.Text + ";" + panel.txtBatMeasured.Text + ";" +
         panel.txtPackMeasured.Text;
}

std::string KeyText(const sim::SecurityKey& key) {
  return testing::HexOf({key.begin(), key.end()});
}

// Parts the labels the security panel shows from what the gauge holds.
constexpr char kGaugeHolds = '|';

// The labels the security panel shows, and the mode and keys the gauge holds.
std::string SecurityOutcome(FlowBench& bench) {
  const AuthMorlin& panel = bench.Security();
  const sim::Gauge& gauge = *bench.Sim().gauge;
  return panel.lblSealStatus.Caption + ";" + panel.lblAuthenticationStatus.Caption + ";" +
         panel.lblUnsealkeyStatus.Caption + kGaugeHolds + "mode " +
         std::to_string(static_cast<int>(gauge.GetSecurityMode())) + ";" +
         KeyText(gauge.Key(sim::GaugeKey::Unseal)) + ";" +
         KeyText(gauge.Key(sim::GaugeKey::FullAccess)) + ";" +
         KeyText(gauge.Key(sim::GaugeKey::Authentication));
}

// The labels tell of a failure when they do not show the clean run's verdict.
bool LabelsDiffer(const std::string& outcome, const std::string& cleanOutcome) {
  return outcome.substr(0, outcome.find(kGaugeHolds)) !=
         cleanOutcome.substr(0, cleanOutcome.find(kGaugeHolds));
}

// A value tells of a failed read when it shows "Err_Rd" where the clean run showed a number.
bool ShowsReadError(const std::string& outcome, const std::string& cleanOutcome) {
  const std::vector<std::string> shown = Split(outcome, ';');
  const std::vector<std::string> clean = Split(cleanOutcome, ';');
  for (std::size_t i = 0; i < shown.size() && i < clean.size(); ++i)
    if (shown[i] == kErrRd && clean[i] != kErrRd) return true;
  return false;
}

void ReadyToCalibrate(FlowBench& bench) {
  bench.Calibration().ReadyToCalibrate();
}

// The offsets and the current are calibrated at a known current; the scan shows it first.
void ReadyAtCurrent(FlowBench& bench, std::int16_t currentMa) {
  PanelBench& calibration = bench.Calibration();
  calibration.ReadyToCalibrate();
  calibration.ApplyCurrent(currentMa);
  calibration.sim.Restart();
}

void SecurityFrom(FlowBench& bench, sim::SecurityMode mode) {
  bench.Sim().gauge->SetSecurityMode(mode);
  bench.Security().UserControl_Show();
  bench.Sim().Restart();
}

CampaignFlow CalibrationFlow(std::string name, std::function<void(FlowBench&)> setUp,
                             void (NBCal::*click)(), Picture NBCal::*mark) {
  return {std::move(name), false, std::move(setUp),
          [click](FlowBench& bench) { (bench.Calibration().panel.*click)(); },
          [mark](FlowBench& bench) { return Mark(bench.Calibration().panel.*mark); },
          // A missing done mark alone tells nothing: the calibrations tell by their boxes.
          nullptr};
}

CampaignFlow SecurityFlow(std::string name, sim::SecurityMode from,
                          std::function<void(AuthMorlin&)> click) {
  return {std::move(name),
          true,
          [from](FlowBench& bench) { SecurityFrom(bench, from); },
          [click = std::move(click)](FlowBench& bench) { click(bench.Security()); },
          SecurityOutcome,
          LabelsDiffer};
}

std::vector<CampaignFlow> MakeFlows() {
  using sim::SecurityMode;
  std::vector<CampaignFlow> flows;
  flows.push_back({"startup", false, [](FlowBench&) {},
                   [](FlowBench& bench) { bench.Calibration().panel.UserControl_Show(); },
                   [](FlowBench& bench) {
                     NBCal& panel = bench.Calibration().panel;
                     std::string seen = "cells " + std::to_string(g_iNumCells) + ";";
                     for (const std::string& line : testing::PanelProbe(panel)())
                       seen += line + ";";
                     return seen + ShownValues(panel);
                   },
                   ShowsReadError});
  flows.push_back(CalibrationFlow("voltage_temperature", ReadyToCalibrate,
                                  &NBCal::btnCalibrate_Click, &NBCal::imgCalDoneBox));
  flows.push_back(CalibrationFlow(
      "pack_voltage",
      [](FlowBench& bench) {
        ReadyToCalibrate(bench);
        NBCal& panel = bench.Calibration().panel;
        panel.txtPackActualVoltage.Text =
            std::to_string(bench.Sim().gauge->AppliedMeasurements().packMv);
      },
      &NBCal::btnPackVoltage_Click, &NBCal::imgPackVoltage));
  flows.push_back(CalibrationFlow(
      "current",
      [](FlowBench& bench) {
        ReadyAtCurrent(bench, -2000);
        bench.Calibration().panel.txtActualCurrent.Text = "-2000";
      },
      &NBCal::btnPackCurrent_Click, &NBCal::ImgPackCurrent));
  flows.push_back(CalibrationFlow(
      "cc_offset", [](FlowBench& bench) { ReadyAtCurrent(bench, 0); },
      &NBCal::btnCalCCCounter_Click, &NBCal::imageCCOffsetDone));
  flows.push_back(CalibrationFlow(
      "board_offset", [](FlowBench& bench) { ReadyAtCurrent(bench, 0); },
      &NBCal::btnBoardOffset_Click, &NBCal::ImgBoardOffset));
  flows.push_back(SecurityFlow("seal", SecurityMode::Unsealed,
                               [](AuthMorlin& panel) { testing::Go(panel, 0); }));
  flows.push_back(SecurityFlow("unseal", SecurityMode::Sealed,
                               [](AuthMorlin& panel) { testing::Go(panel, 1); }));
  flows.push_back(SecurityFlow("full_access", SecurityMode::Unsealed,
                               [](AuthMorlin& panel) { testing::Go(panel, 2); }));
  flows.push_back(SecurityFlow("authenticate", SecurityMode::FullAccess,
                               [](AuthMorlin& panel) { panel.btnAuthenticate_Click(); }));
  flows.push_back(SecurityFlow("change_key", SecurityMode::FullAccess, [](AuthMorlin& panel) {
    panel.txtUnsealKeyNew.Text = testing::kNewUnsealKey;
    panel.Change_Unseal_Key_Click();
  }));
  flows.push_back({"scan_tick", false,
                   [](FlowBench& bench) {
                     PanelBench& calibration = bench.Calibration();
                     calibration.StartUp();
                     calibration.panel.chkUpdates.Value = 1;
                   },
                   [](FlowBench& bench) { bench.Calibration().panel.tmrScan_Timer(); },
                   [](FlowBench& bench) { return ShownValues(bench.Calibration().panel); },
                   ShowsReadError});
  return flows;
}

}  // namespace

FlowBench::FlowBench(sim::Family family, bool security) {
  if (security)
    security_ = std::make_unique<testing::SecurityBench>(family);
  else
    calibration_ = std::make_unique<testing::PanelBench>(family);
}

const std::vector<CampaignFlow>& CampaignFlows() {
  static const std::vector<CampaignFlow> flows = MakeFlows();
  return flows;
}

}  // namespace ombrelay
