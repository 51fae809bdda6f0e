#include "tests/support/sim_bench.h"

#include <algorithm>

#include "shell/shared_state.h"
#include "sim/sample_gauges.h"

namespace ombrelay::testing {

std::vector<Shown> Boxes(const VirtualPlatform& platform) {
  std::vector<Shown> shown;
  for (const auto& message : platform.Messages())
    shown.push_back({message.text, message.style});
  return shown;
}

SimBench::SimBench(std::optional<sim::Family> family, const std::string& appdir) {
  ResetSharedState();
  if (family) gauge = sim::MakeSampleGauge(*family, clock);
  bus.Attach(gauge.get());
  g_oHost = &host;
  g_oPlatform = &platform;
  g_iTargetAddress = 23;
  g_sPluginFolder = appdir + "/plugins";
  host.onOperation = [this](const BusOperation& operation) {
    trace.Record(operation);
    if (afterOperation) afterOperation(operation);
  };
  platform.onActivity = [this](const PlatformActivity& activity) { trace.Record(activity); };
}

SimBench::~SimBench() {
  ResetSharedState();
}

std::vector<std::string> SimBench::MessageTexts() const {
  std::vector<std::string> texts;
  for (const auto& message : platform.Messages())
    texts.push_back(message.text);
  return texts;
}

std::vector<BusOperation> SimBench::OperationsNamed(const std::string& op) const {
  std::vector<BusOperation> named;
  std::copy_if(host.Operations().begin(), host.Operations().end(), std::back_inserter(named),
               [&](const BusOperation& operation) { return operation.op == op; });
  return named;
}

void SimBench::Restart() {
  host.Clear();
  platform.ClearMessages();
  trace.Clear();
}

std::function<bool(const BusOperation&)> OnCommand(std::int32_t command) {
  return [command](const BusOperation& operation) { return operation.cmd == command; };
}

std::function<bool(const BusOperation&)> OnWord(std::uint16_t word) {
  return [word](const BusOperation& operation) { return operation.word == word; };
}

void SimBench::After(std::function<bool(const BusOperation&)> matches, int nth,
                     std::function<void()> then) {
  afterOperation = [matches = std::move(matches), nth, then = std::move(then),
                    seen = 0](const BusOperation& operation) mutable {
    if (matches(operation) && ++seen == nth) then();
  };
}

void SimBench::After(const std::string& op, int nth, std::function<void()> then) {
  After([op](const BusOperation& operation) { return operation.op == op; }, nth, std::move(then));
}

}  // namespace ombrelay::testing
