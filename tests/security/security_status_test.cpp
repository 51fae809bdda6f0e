// The mode, sealing and btnGo's table of decisions, with their whole traces.

#include <gtest/gtest.h>

#include "tests/support/expected_trace.h"
#include "tests/support/security_bench.h"

namespace ombrelay {
namespace {

using sim::SecurityMode;
using sim::Transfer;
using testing::MatchesTrace;
using testing::SecurityBench;
using testing::Shown;

constexpr std::int16_t kSeal = 0;
constexpr std::int16_t kUnseal = 1;
constexpr std::int16_t kFullAccess = 2;

constexpr const char* kStatusNotSent =
    "Not able to send operation status to MAC. Please check communication with device.";
constexpr const char* kStatusNotRead =
    "Not able to read operation status of device. Please check communication with device.";

// The ManufacturerAccess words written, other than the status request.
std::vector<std::uint16_t> ActionWords(const SecurityBench& bench) {
  std::vector<std::uint16_t> words;
  for (const BusOperation& operation : bench.sim.OperationsNamed("WriteSMBusWord_")) {
    if (operation.word != 0x0054) words.push_back(*operation.word);
  }
  return words;
}

// Each cell of btnGo's table: the option selected, the mode the gauge is in (nothing for a
// status block that does not arrive), and the message or the word that follows.
struct Cell {
  std::int16_t option;
  std::optional<SecurityMode> mode;
  const char* message;
  std::optional<std::uint16_t> word;
};

class BtnGoDecides : public ::testing::TestWithParam<Cell> {};

TEST_P(BtnGoDecides, ByTheSelectionAndTheMode) {
  const Cell cell = GetParam();
  SecurityBench bench;
  bench.sim.gauge->SetSecurityMode(cell.mode.value_or(SecurityMode::Unsealed));
  bench.StartUp();
  // No mode: the two status blocks of the decision do not arrive; the request words do.
  if (!cell.mode) bench.sim.gauge->FailNext(Transfer::BlockRead, 2);
  bench.Go(cell.option);
  if (cell.message != nullptr) {
    EXPECT_TRUE(MatchesTrace(bench.Trace(), "security/go-refused", {{"message", cell.message}}));
  } else {
    EXPECT_EQ(ActionWords(bench), std::vector<std::uint16_t>{*cell.word});
  }
  EXPECT_TRUE(bench.panel.btnGo.Enabled);
}

const Cell kCells[] = {
    {kSeal, SecurityMode::Sealed, "Device is already sealed. Nothing to do.", {}},
    {kSeal, SecurityMode::Unsealed, nullptr, 0x0030},
    {kSeal, SecurityMode::FullAccess, nullptr, 0x0030},
    {kSeal, std::nullopt, nullptr, 0x0030},
    {kUnseal, SecurityMode::Sealed, nullptr, 0x0031},
    {kUnseal, SecurityMode::Unsealed, "Device is not sealed. Nothing to do.", {}},
    {kUnseal, SecurityMode::FullAccess, "Device is not sealed. Nothing to do.", {}},
    {kUnseal, std::nullopt, nullptr, 0x0031},
    {kFullAccess, SecurityMode::Sealed, nullptr, 0x0032},
    {kFullAccess, SecurityMode::Unsealed, nullptr, 0x0032},
    {kFullAccess,
     SecurityMode::FullAccess,
     "Device is already in full access mode. Nothing to do.",
     {}},
    {kFullAccess, std::nullopt, nullptr, 0x0032},
};
INSTANTIATE_TEST_SUITE_P(EveryCell, BtnGoDecides, ::testing::ValuesIn(kCells));

TEST(BtnGo, SealsAndShowsTheModeWithItsWaits) {
  for (const SecurityMode mode : {SecurityMode::Unsealed, SecurityMode::FullAccess}) {
    SecurityBench bench;
    bench.sim.gauge->SetSecurityMode(mode);
    bench.StartUp();
    bench.Go(kSeal);
    EXPECT_TRUE(MatchesTrace(bench.Trace(), "security/go-seal"));
    EXPECT_EQ(bench.sim.gauge->GetSecurityMode(), SecurityMode::Sealed);
  }
}

TEST(BtnGo, DoesNothingWithNoOptionSelected) {
  SecurityBench bench;
  bench.StartUp();
  for (OptionButton& option : bench.panel.optionAction)
    option.Value = false;
  bench.panel.btnGo_Click();
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "security/status-read"));
}

TEST(OptionAction, KeepsTheThreeExclusive) {
  SecurityBench bench;
  EXPECT_TRUE(bench.panel.optionAction[kUnseal].Value) << "Unseal is the selection at start";
  for (std::int16_t index = 0; index < 3; ++index) {
    for (OptionButton& option : bench.panel.optionAction)
      option.Value = true;
    bench.panel.optionAction_Click(index);
    for (std::int16_t other = 0; other < 3; ++other)
      EXPECT_EQ(bench.panel.optionAction[static_cast<std::size_t>(other)].Value, other == index);
  }
}

TEST(ShowDeviceMode, ReadsOnlyTheLowTwoBitsOfAZeroFilledBlock) {
  SecurityBench bench;
  bench.StartUp();
  // The sample's Operation Status sets other bits of byte 1 beside the mode.
  for (const auto& [mode, caption] : std::vector<std::pair<SecurityMode, const char*>>{
           {SecurityMode::Sealed, "Sealed"},
           {SecurityMode::Unsealed, "Unsealed"},
           {SecurityMode::FullAccess, "Full Access"}}) {
    bench.sim.gauge->SetSecurityMode(mode);
    bench.panel.ShowDeviceMode();
    EXPECT_EQ(bench.panel.lblSealStatus.Caption, caption);
  }
  // A block of one byte leaves byte 1 as the fresh buffer has it, not as the last block did.
  bench.sim.gauge->AnswerNextBlockReadsWithLength(1, 1);
  bench.panel.ShowDeviceMode();
  EXPECT_EQ(bench.panel.lblSealStatus.Caption, "Last Operation Failed");
  EXPECT_TRUE(bench.sim.MessageTexts().empty()) << "a failed block read is silent";
}

// Failures of the status request and of sealing, each with what the user sees, in order.
TEST(BtnGo, TellsEachFailureOfTheStatusAndTheSeal) {
  {
    SecurityBench bench;
    bench.StartUp();
    // The decision's status request fails: its own message, then btnGo's.
    bench.sim.After(testing::OnWord(0x0054), 1,
                    [&] { bench.sim.gauge->FailNext(Transfer::WordWrite, 1); });
    bench.Go(kSeal);
    EXPECT_EQ(testing::Boxes(bench.sim.platform),
              (std::vector<Shown>{{kStatusNotSent, MessageStyle::Plain},
                                  {kStatusNotRead, MessageStyle::Plain}}));
    EXPECT_TRUE(ActionWords(bench).empty());
    EXPECT_TRUE(bench.panel.btnGo.Enabled);
  }
  {
    SecurityBench bench;
    bench.StartUp();
    bench.sim.After(testing::OnWord(0x0054), 2,
                    [&] { bench.sim.gauge->FailNext(Transfer::WordWrite, 1); });
    bench.Go(kSeal);
    EXPECT_EQ(testing::Boxes(bench.sim.platform),
              (std::vector<Shown>{{"Unable to send seal command.", MessageStyle::Plain}}));
    EXPECT_EQ(bench.panel.lblSealStatus.Caption, "Unsealed") << "read again at the end";
  }
  {
    // The seal word goes through but the status request after it does not: the same text
    // twice, and no verdict on the seal.
    SecurityBench bench;
    bench.StartUp();
    bench.sim.After(testing::OnWord(0x0030), 1,
                    [&] { bench.sim.gauge->FailNext(Transfer::WordWrite, 1); });
    bench.Go(kSeal);
    EXPECT_EQ(testing::Boxes(bench.sim.platform),
              (std::vector<Shown>{{kStatusNotSent, MessageStyle::Plain},
                                  {kStatusNotSent, MessageStyle::Plain}}));
  }
  {
    // The gauge ignores the seal word while its status block still arrives: the check reads
    // Unsealed. With the block failing the check reads 0, and fails the same way.
    for (const bool blockFails : {false, true}) {
      SecurityBench bench;
      bench.StartUp();
      bench.sim.After(testing::OnWord(0x0030), 1, [&] {
        bench.sim.gauge->SetSecurityMode(SecurityMode::Unsealed);
        if (blockFails) bench.sim.gauge->FailNext(Transfer::BlockRead, 1);
      });
      bench.Go(kSeal);
      EXPECT_EQ(testing::Boxes(bench.sim.platform),
                (std::vector<Shown>{{"Attempt to seal device failed.", MessageStyle::Plain}}));
    }
  }
}

}  // namespace
}  // namespace ombrelay
