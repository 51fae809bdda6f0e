// The fault campaign's verdicts on flows made to crash, hang, scribble on the dataflash or fail
// with and without a box when their one bus read fails.

#include "bench/faulted_run.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "shell/platform.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kRsoc = sim::Gauge::kRelativeStateOfCharge;

// Reads the state of charge once; on a failed read does what onFailure does.
CampaignFlow ReadingFlow(std::function<void(FlowBench&)> onFailure) {
  return {"reading",
          true,
          [](FlowBench&) {},
          [onFailure = std::move(onFailure)](FlowBench& bench) {
            std::int16_t word = 0;
            if (bench.Sim().host.ReadSMBusWord_(kRsoc, word, sim::Gauge::kAddress) != 0)
              onFailure(bench);
          },
          [](FlowBench& bench) { return std::to_string(bench.Sim().host.Operations().size()); },
          nullptr};
}

struct Verdict {
  FaultedRun clean;
  FaultedRun faulted;
};

// The flow run clean and with its read failing, each as the campaign runs a faulted run.
Verdict Judge(const CampaignFlow& flow, FaultKind kind = FaultKind::TransferFails) {
  const CleanRun clean = RunClean(flow, sim::Family::Morlin);
  EXPECT_EQ(clean.operations.size(), 1u);
  FlowBench prepared(sim::Family::Morlin, flow.security);
  flow.setUp(prepared);
  const Fault noFault{FaultKind::PendingErrors};
  return {RunFaulted(prepared, flow, clean, clean.operations.size(), noFault),
          RunFaulted(prepared, flow, clean, 0, {kind, sim::Transfer::WordRead, 2})};
}

TEST(FaultedRun, CountsACrash) {
  const Verdict verdict = Judge(ReadingFlow([](FlowBench&) { std::abort(); }));
  EXPECT_FALSE(verdict.clean.crashed);
  EXPECT_TRUE(verdict.faulted.crashed);
  EXPECT_FALSE(verdict.faulted.hung);
}

TEST(FaultedRun, CountsAHangOnTheBus) {
  const Verdict verdict = Judge(ReadingFlow([](FlowBench& bench) {
    std::int16_t word = 0;
    while (bench.Sim().host.ReadSMBusWord_(kRsoc, word, sim::Gauge::kAddress) == 0) {
    }
  }));
  EXPECT_FALSE(verdict.clean.hung);
  EXPECT_TRUE(verdict.faulted.hung);
  EXPECT_FALSE(verdict.faulted.crashed);
}

TEST(FaultedRun, CountsStrayBytesOfASilentFailure) {
  const Verdict verdict = Judge(ReadingFlow([](FlowBench& bench) {
    const std::uint8_t scribbled[] = {0xA5, 0x5A};
    bench.Sim().gauge->SetDataflashBytes(0x40, scribbled);
  }));
  EXPECT_EQ(verdict.clean.strayBytes, 0u);
  EXPECT_FALSE(verdict.clean.failed);
  EXPECT_EQ(verdict.faulted.strayBytes, 2u);
  EXPECT_EQ(verdict.faulted.firstStrayAddress, 0x40u);
  EXPECT_TRUE(verdict.faulted.failed);
  EXPECT_FALSE(verdict.faulted.told);
}

TEST(FaultedRun, CountsABytePutWhereTheCleanRunPutAnotherAsStray) {
  const auto write = [](std::uint8_t value) {
    return [value](FlowBench& bench) {
      const std::uint8_t byte[] = {value};
      bench.Sim().gauge->SetDataflashBytes(0x40, byte);
    };
  };
  CampaignFlow flow = ReadingFlow(write(0x11));
  flow.run = [run = flow.run, write](FlowBench& bench) {
    write(0x22)(bench);
    run(bench);
  };
  const Verdict verdict = Judge(flow);
  EXPECT_EQ(verdict.clean.strayBytes, 0u);
  EXPECT_EQ(verdict.faulted.strayBytes, 1u);
}

TEST(FaultedRun, TellsAFailureWithABox) {
  const Verdict verdict = Judge(ReadingFlow([](FlowBench& bench) {
    bench.Sim().platform.MessageBox("read failed", MessageStyle::Error, "Ombrelay");
    std::int16_t word = 0;
    bench.Sim().host.ReadSMBusWord_(kRsoc, word, sim::Gauge::kAddress);
  }));
  EXPECT_FALSE(verdict.clean.told);
  EXPECT_TRUE(verdict.faulted.told);
  EXPECT_TRUE(verdict.faulted.failed);
}

TEST(FaultedRun, TellsAFailureByAnOutcomeOnlyWhenTheFlowSaysItTells) {
  CampaignFlow flow = ReadingFlow([](FlowBench& bench) {
    std::int16_t word = 0;
    bench.Sim().host.ReadSMBusWord_(kRsoc, word, sim::Gauge::kAddress);
  });
  EXPECT_FALSE(Judge(flow).faulted.told);
  flow.tells = [](const std::string& outcome, const std::string& clean) {
    return outcome == "2" && clean == "1";
  };
  const Verdict verdict = Judge(flow);
  EXPECT_FALSE(verdict.clean.told);
  EXPECT_TRUE(verdict.faulted.told);
}

TEST(FaultedRun, AFaultTheFlowShrugsOffIsNoFailure) {
  // A corrupt answer on the one read changes nothing this flow keeps.
  const Verdict verdict =
      Judge(ReadingFlow([](FlowBench&) { std::abort(); }), FaultKind::FirstByteCorrupt);
  EXPECT_FALSE(verdict.faulted.crashed);
  EXPECT_FALSE(verdict.faulted.failed);
}

}  // namespace
}  // namespace ombrelay
