// The fault campaign: every flow of both panels on every family, run clean once and then again
// with one fault injected right before each of its bus operations, on the virtual clock. It
// counts crashes, hangs, stray dataflash bytes and failures that told the user nothing, apart
// from those the flows' own algorithms give by design, and fails on any of the four.

#include <CLI/CLI.hpp>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "bench/faulted_run.h"
#include "bench/known_outcomes.h"

namespace ombrelay {
namespace {

using Json = nlohmann::ordered_json;

// The runs a known outcome of the flows' own algorithms explains, and the bytes they left stray.
struct Explained {
  std::size_t runs = 0;
  std::size_t strayBytes = 0;
};

struct Tally {
  std::size_t runs = 0;
  std::size_t faults = 0;
  std::size_t crashes = 0;
  std::size_t hangs = 0;
  // Failures that nothing explains: stray bytes and failures that told the user nothing.
  std::size_t strayBytes = 0;
  std::size_t runsWithStrayBytes = 0;
  std::size_t silentFailures = 0;
  std::size_t failuresTold = 0;
  std::map<std::string, Explained> explained;

  void Add(const Tally& other) {
    runs += other.runs;
    faults += other.faults;
    crashes += other.crashes;
    hangs += other.hangs;
    strayBytes += other.strayBytes;
    runsWithStrayBytes += other.runsWithStrayBytes;
    silentFailures += other.silentFailures;
    failuresTold += other.failuresTold;
    for (const auto& [name, counts] : other.explained) {
      explained[name].runs += counts.runs;
      explained[name].strayBytes += counts.strayBytes;
    }
  }
  bool Clean() const { return crashes + hangs + strayBytes + silentFailures == 0; }
  Json ToJson(bool withReasons) const {
    Json known = Json::object();
    for (const KnownOutcome& outcome : KnownOutcomes()) {
      const auto found = explained.find(outcome.name);
      if (found == explained.end()) continue;
      Json counts = {{"runs", found->second.runs}, {"stray_bytes", found->second.strayBytes}};
      if (withReasons) counts["why"] = outcome.why;
      known[outcome.name] = counts;
    }
    return {{"runs", runs},
            {"faults_injected", faults},
            {"crashes", crashes},
            {"hangs", hangs},
            {"stray_bytes", strayBytes},
            {"runs_with_stray_bytes", runsWithStrayBytes},
            {"silent_failures", silentFailures},
            {"failures_told", failuresTold},
            {"known_outcomes", known}};
  }
};

// Where a fault struck, to find the run again with --flow and --family.
Json Where(std::size_t k, const Fault& fault, const BusOperation& clean, const FaultedRun& run) {
  return {{"k", k},
          {"fault", FaultName(fault.kind)},
          {"op", clean.op},
          {"cmd", clean.cmd},
          {"outcome", run.outcome}};
}

// What the campaign tells beyond its counts, for finding out why a run went as it did.
struct Detail {
  bool each = false;
  bool operations = false;
};

Tally Campaign(const CampaignFlow& flow, sim::Family family, std::size_t sample, Detail detail) {
  const CleanRun clean = RunClean(flow, family);
  FlowBench prepared(family, flow.security);
  flow.setUp(prepared);
  const std::string name(sim::FamilyName(family));
  if (prepared.Sim().gauge->DataflashBytes(0, kCampaignDataflashBytes) != clean.before) {
    std::cerr << flow.name << " " << name << ": the bench does not reach the same start twice\n";
    std::exit(2);
  }

  if (detail.operations) {
    for (std::size_t k = 0; k < clean.operations.size(); ++k) {
      Json line = {{"k", k}};
      line.update(Json(ToJson(clean.operations[k])));
      std::cout << line.dump() << "\n";
    }
  }
  Tally tally;
  tally.runs = 1;
  Json examples = Json::object();
  const auto example = [&](const char* what, Json where) {
    if (!examples.contains(what)) examples[what] = std::move(where);
  };
  for (std::size_t k = 0; k < clean.operations.size(); k += sample) {
    const BusOperation& operation = clean.operations[k];
    for (const Fault& fault : FaultsFor(operation)) {
      const FaultedRun run = RunFaulted(prepared, flow, clean, k, fault);
      ++tally.runs;
      ++tally.faults;
      const Json where = Where(k, fault, operation, run);
      if (run.crashed) {
        ++tally.crashes;
        example("crash", where);
      }
      if (run.hung) {
        ++tally.hangs;
        example("hang", where);
      }
      const bool untold = (run.failed || run.strayBytes > 0) && !run.told;
      if (run.failed && run.told) ++tally.failuresTold;
      const KnownOutcome* known =
          untold ? KnownOutcomeOf({flow.name, family, clean.operations, k, fault}) : nullptr;
      if (known != nullptr) {
        Explained& explained = tally.explained[known->name];
        ++explained.runs;
        explained.strayBytes += run.strayBytes;
      } else if (untold) {
        if (run.strayBytes > 0) {
          tally.strayBytes += run.strayBytes;
          ++tally.runsWithStrayBytes;
          Json stray = where;
          stray["first_stray_address"] = run.firstStrayAddress;
          example("stray_bytes", stray);
        }
        if (run.failed) {
          ++tally.silentFailures;
          example("silent_failure", where);
        }
      }
      if (detail.each && (run.crashed || run.hung || run.failed || run.strayBytes > 0)) {
        Json line = where;
        line["crashed"] = run.crashed;
        line["hung"] = run.hung;
        line["told"] = run.told;
        line["stray_bytes"] = run.strayBytes;
        if (run.strayBytes > 0) line["first_stray_address"] = run.firstStrayAddress;
        if (known != nullptr) line["known_outcome"] = known->name;
        std::cout << line.dump() << "\n";
      }
    }
  }
  Json line = {{"flow", flow.name},
               {"family", name},
               {"operations", clean.operations.size()},
               {"clean_outcome", clean.outcome},
               {"clean_boxes", clean.boxes}};
  line.update(tally.ToJson(false));
  line["examples"] = examples;
  std::cout << line.dump() << std::endl;
  return tally;
}

}  // namespace
}  // namespace ombrelay

int main(int argc, char** argv) {
  using namespace ombrelay;
  CLI::App app{"Faults injected at every bus operation of every flow, on the virtual clock"};
  std::size_t sample = 1;
  std::string onlyFlow;
  std::string onlyFamily;
  Detail detail;
  app.add_option("--sample", sample, "run only every Nth operation of each clean run")
      ->check(CLI::PositiveNumber);
  app.add_option("--flow", onlyFlow, "only this flow");
  app.add_option("--family", onlyFamily, "only this family");
  app.add_flag("--operations", detail.operations, "also the clean run's operations, one a line");
  app.add_flag("--each", detail.each,
               "also a line for each faulted run that did not end as the clean run");
  CLI11_PARSE(app, argc, argv);

  std::optional<sim::Family> family;
  if (!onlyFamily.empty() && !(family = sim::FamilyFromName(onlyFamily))) {
    std::cerr << "no family " << onlyFamily << "\n";
    return 2;
  }
  Tally total;
  std::size_t flows = 0;
  for (const CampaignFlow& flow : CampaignFlows()) {
    if (!onlyFlow.empty() && flow.name != onlyFlow) continue;
    for (const sim::Family oneFamily : ombrelay::testing::kEveryFamily) {
      if (family && oneFamily != *family) continue;
      total.Add(Campaign(flow, oneFamily, sample, detail));
      ++flows;
    }
  }
  if (flows == 0) {
    std::cerr << "no flow " << onlyFlow << "\n";
    return 2;
  }
  Json summary = {{"summary", true}, {"flows", flows}, {"sample", sample}};
  summary.update(total.ToJson(true));
  summary["note"] =
      "the pending-error drain loops call CheckForError until it gives 0; the simulator's "
      "pending errors are finite, so they end";
  std::cout << summary.dump() << std::endl;
  return total.Clean() ? 0 : 1;
}
