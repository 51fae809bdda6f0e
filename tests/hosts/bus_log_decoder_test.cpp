// The bus log as the bench's table shows it, decoded from whole flows of the panels on the
// simulated gauges, and from hand-made operations where no flow goes, and compared whole with
// the tables in tests/traces/bus_log/: one row a line,
// "time | operation | command | bytes | status", "-" for an empty cell and "!" in front of a row
// marked failed.

#include "hosts/bus_log_decoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <vector>

#include "shell/shared_state.h"
#include "tests/support/expected_trace.h"
#include "tests/support/hand_made_operations.h"
#include "tests/support/panel_bench.h"
#include "tests/support/security_bench.h"

namespace ombrelay {
namespace {

using testing::Block;
using testing::MatchesTrace;
using testing::PanelBench;
using testing::SecurityBench;
using testing::Word;

constexpr std::int16_t kSeal = 0;
constexpr std::int16_t kUnseal = 1;
constexpr const char* kWithheldKey = "** ** ** ** ** ** ** ** ** ** ** ** ** ** ** **";

std::string Cell(const std::string& text) {
  return text.empty() ? "-" : text;
}

std::string Line(const BusLogRow& row, bool showKeys) {
  const std::string& bytes = showKeys && row.keyBytes ? *row.keyBytes : row.bytes;
  return (row.failed ? "! " : "") + row.time + " | " + row.operation + " | " + Cell(row.command) +
         " | " + Cell(bytes) + " | " + Cell(row.status);
}

// Hex as the table shows it: a blank between bytes.
std::string Spaced(const std::string& hex) {
  std::string spaced;
  for (std::size_t i = 0; i < hex.size(); i += 2)
    spaced += (i == 0 ? "" : " ") + hex.substr(i, 2);
  return spaced;
}

// The digest a gauge with key answers to the challenge it gave, as the bus carries it.
std::string BusDigest(const std::string& key, const std::vector<std::uint8_t>& busChallenge) {
  std::array<std::uint8_t, 20> shown{};
  std::reverse_copy(busChallenge.begin(), busChallenge.end(), shown.begin());
  const auto digest = testing::ExpectedDigest(key, shown);
  return Spaced(testing::TurnedHexOf({digest.begin(), digest.end()}));
}

// Decodes every operation of sim from now on, on the configuration its panels hold.
class DecodedLog {
 public:
  explicit DecodedLog(testing::SimBench& sim) {
    sim.afterOperation = [this](const BusOperation& operation) {
      rows_.push_back(decoder_.Decode(operation));
    };
  }

  std::vector<std::string> Lines(bool showKeys = false) const {
    std::vector<std::string> lines;
    for (const BusLogRow& row : rows_)
      lines.push_back(Line(row, showKeys));
    return lines;
  }

 private:
  BusLogDecoder decoder_{CurrentConfiguredCommands};
  std::vector<BusLogRow> rows_;
};

TEST(BusLogDecoder, TellsTheSecurityPanelsUnsealOfASealedGaugeAndTheSealAfter) {
  SecurityBench bench;
  bench.sim.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  const DecodedLog log(bench.sim);
  bench.panel.UserControl_Show();
  bench.sim.Restart();
  bench.Go(kUnseal);
  ASSERT_EQ(bench.sim.gauge->GetSecurityMode(), sim::SecurityMode::Unsealed);

  const std::vector<std::uint8_t> challenge = bench.Challenge();
  bench.Go(kSeal);
  ASSERT_EQ(bench.sim.gauge->GetSecurityMode(), sim::SecurityMode::Sealed);
  EXPECT_TRUE(MatchesTrace(log.Lines(), "bus_log/unseal-then-seal-morlin",
                           {{"challenge", Spaced(testing::HexOf(challenge))},
                            {"digest", BusDigest(AuthMorlin::kDefaultKey, challenge)}}));
}

TEST(BusLogDecoder, TellsTheCalibrationStartUpOnMorlin) {
  PanelBench bench;
  const DecodedLog log(bench.sim);
  bench.StartUp();
  EXPECT_TRUE(MatchesTrace(log.Lines(), "bus_log/startup-morlin"));
}

TEST(BusLogDecoder, TellsEnteringCalibrationModeOnMorlin) {
  PanelBench bench;
  bench.StartUp();
  const DecodedLog log(bench.sim);
  ASSERT_EQ(bench.panel.EnterCalibrationMode(0), 0);
  EXPECT_TRUE(MatchesTrace(log.Lines(), "bus_log/enter-calibration-mode-morlin"));
}

TEST(BusLogDecoder, WithholdsTheNewKeyOfAKeyChangeUnlessKeysAreShown) {
  SecurityBench bench;
  bench.sim.gauge->SetSecurityMode(sim::SecurityMode::FullAccess);
  bench.StartUp();
  const DecodedLog log(bench.sim);
  bench.panel.txtUnsealKeyNew.Text = testing::kNewUnsealKey;
  bench.panel.Change_Unseal_Key_Click();
  ASSERT_EQ(bench.panel.lblUnsealkeyStatus.Caption, "Unseal Key Change Successful");

  const std::vector<std::uint8_t> challenge = bench.Challenge();
  const auto key = testing::KeyBytes(testing::kNewUnsealKey);
  const std::map<std::string, std::string> values = {
      {"challenge", Spaced(testing::HexOf(challenge))},
      {"digest", BusDigest(testing::kNewUnsealKey, challenge)}};
  auto withheld = values;
  withheld["key"] = kWithheldKey;
  EXPECT_TRUE(MatchesTrace(log.Lines(), "bus_log/change-key-morlin", withheld));
  auto shown = values;
  shown["key"] = Spaced(testing::TurnedHexOf({key.begin(), key.end()}));
  EXPECT_TRUE(MatchesTrace(log.Lines(true), "bus_log/change-key-morlin", shown));
}

TEST(BusLogDecoder, NamesTheReadsConfigIniGivesInAQuillScan) {
  PanelBench bench(sim::Family::Quill);
  bench.StartUp();
  const DecodedLog log(bench.sim);
  bench.panel.chkUpdates.Value = 1;
  bench.panel.tmrScan_Timer();
  EXPECT_TRUE(MatchesTrace(log.Lines(), "bus_log/scan-tick-quill"));
}

TEST(BusLogDecoder, NamesByTheTrafficBeforeAndTheConfigurationOfTheMoment) {
  ConfiguredCommands configured;
  configured.family = MORLIN;
  configured.manufacturerData = 0x23;
  configured.dataflashRows = 0x2F;
  configured.exitCalibrationWord = 0xF080;
  BusLogDecoder decoder([&configured] { return configured; });
  std::vector<std::string> lines;
  const auto decode = [&](const BusOperation& operation) {
    lines.push_back(Line(decoder.Decode(operation), true));
  };
  decode(Word("ReadSMBusWord", 0x5B, 0x1234, 5000));
  decode(Word("WriteSMBusWord_", 0x00, 0x0001, 5001));
  decode(Word("ReadSMBusWord", 0x00, 0x0E10, 5004));
  decode(Block("ReadSMBusBlock_", 0x23, {0x01, 0x02}, 5004));
  decode(Word("ReadSMBusWord", 0x00, 0x0E10, 5004));
  decode(Block("WriteSMBusBlock", 0x44, {0x09}, 5010));
  decode(Word("WriteSMBusWord_", 0x00, 0xF080, 5010));
  decode(Block("ReadSMBusBlock_", 0x2F, {0xAA, 0xBB}, 5063));
  configured.dataflashRows = 0x30;
  decode(Word("WriteSMBusWord_", 0x00, 0x0100, 6000));
  decode(Block("ReadSMBusBlock_", 0x30, {0x11, 0x22}, 6020));
  decode(Block("ReadSMBusBlock_", 0x2F, {0x33}, 6020));
  BusOperation elsewhere = Word("WriteSMBusWord_", 0x00, 0x0054, 7250, 2);
  elsewhere.address = 0;
  decode(elsewhere);
  BusOperation wait = testing::Operation("Delay", BusOperation::kNoCommand, 7253);
  wait.len = 250;
  decode(wait);
  decode(Word("WriteSMBusWord_", 0x00, 0x0035, 7503));
  BusOperation withheld = Block("WriteSMBusBlock", 0x2F, std::vector<std::uint8_t>(16, 0), 7526);
  withheld.masked = true;
  decode(withheld);
  EXPECT_TRUE(MatchesTrace(lines, "bus_log/names-by-context"));
}

}  // namespace
}  // namespace ombrelay
