#pragma once
// The flows the fault campaign strikes: each with the way the bench gets to its start, the flow
// itself, and what it leaves for the user to see.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "sim/family.h"
#include "tests/support/panel_bench.h"
#include "tests/support/security_bench.h"

namespace ombrelay {

// A simulated gauge with the calibration panel or the security panel on it: never both, as
// both would claim the one shared state.
class FlowBench {
 public:
  FlowBench(sim::Family family, bool security);

  testing::SimBench& Sim() { return calibration_ ? calibration_->sim : security_->sim; }
  testing::PanelBench& Calibration() { return *calibration_; }
  AuthMorlin& Security() { return security_->panel; }

 private:
  std::unique_ptr<testing::PanelBench> calibration_;
  std::unique_ptr<testing::SecurityBench> security_;
};

struct CampaignFlow {
  std::string name;
  bool security = false;
  // Brings a fresh bench to the flow's start; the bus record and the boxes start afresh.
  std::function<void(FlowBench&)> setUp;
  std::function<void(FlowBench&)> run;
  // What the flow left for the user: a done mark, a verdict, a mode, the values shown.
  std::function<std::string(FlowBench&)> outcome;
  // Whether an outcome other than the clean one tells the user of a failure by itself, as a
  // verdict or an "Err_Rd" does; a box always tells. Unset: only a box tells.
  std::function<bool(const std::string& outcome, const std::string& cleanOutcome)> tells;
};

const std::vector<CampaignFlow>& CampaignFlows();

}  // namespace ombrelay
