// The command line's own rules: usage errors, failures and their lines, the question before a
// change, keys kept out of reports and logs, the calculator, repeated status and progress.

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "security/auth_morlin.h"
#include "tests/cli/cli_bench.h"

namespace ombrelay {
namespace {

using testing::CliBench;
using testing::CliRun;
using testing::HostKind;
using testing::kNewKey;
// The new key as the bus carries it: last pair first.
constexpr const char* kNewKeyOnTheBus = "FFEEDDCCBBAA99887766554433221100";

class CommandLineTest : public ::testing::Test {
 protected:
  CliBench bench{HostKind::Simulator, sim::Family::Morlin};
};

TEST_F(CommandLineTest, UsageErrorsExitWithTwoAndTouchNoGauge) {
  const std::vector<std::vector<std::string>> usages = {
      {},
      {"--no-such-option", "identify"},
      {"--bus", "1", "identify"},  // --sim as well, from the bench
      {"--pec", "identify"},       // PEC is the bus's, not the simulator's
      {"--bus", "i2c", "identify"},
      {"calibrate"},
      {"calibrate", "pack"},
      {"calibrate", "pack", "--mv", "twelve"},
      {"calibrate", "voltage-temperature", "--temp", "ext9=25"},
      {"calibrate", "voltage-temperature", "--temp", "ext1"},
      {"change-key", "everything", "--key", kNewKey},
      {"unseal"},
      {"status", "--watch", "0"},
      {"digest", "--key", kNewKey},
      {"digest", "--message", "00", "--mode", "sha256"},
  };
  for (const auto& args : usages) {
    const CliRun run = bench.Run(args);
    EXPECT_EQ(run.exit, 2) << ::testing::PrintToString(args) << run.err;
    EXPECT_FALSE(run.err.empty());
  }
  EXPECT_EQ(bench.gauge->GetSecurityMode(), sim::SecurityMode::Unsealed);
}

TEST(CommandLineOnABus, ChecksPacketsWhenAsked) {
  EXPECT_EQ(CliBench(HostKind::EmulatedBus, sim::Family::Keld).Run({"--pec", "mode"}).exit, 0);
  CliBench withoutPec{HostKind::EmulatedBus, sim::Family::Keld, {.pec = false}};
  EXPECT_EQ(withoutPec.Run({"mode"}).exit, 0);
  const CliRun run = withoutPec.Run({"--pec", "mode"});
  EXPECT_EQ(run.exit, 1);
  EXPECT_EQ(run.err, "ombrelay: /dev/i2c-18 cannot check packets: it lacks I2C_FUNC_SMBUS_PEC.\n");
}

TEST_F(CommandLineTest, HelpSaysTheBoxesTakeStackVoltages) {
  const CliRun run = bench.Run({"calibrate", "voltage-temperature", "--help"});
  EXPECT_EQ(run.exit, 0);
  EXPECT_NE(run.out.find("from stack ground to the top of cell 1"), std::string::npos) << run.out;
}

TEST_F(CommandLineTest, FailuresExitWithOneAndSayWhy) {
  struct Failure {
    std::vector<std::string> args;
    std::string line;  // on standard error
  };
  const std::vector<Failure> failures = {
      {{"calibrate", "pack", "--mv", "100"},
       "message: plain: Pack Voltage entered appears low. Please enter a higher voltage.\n"},
      {{"calibrate", "current", "--ma", "0"},
       "message: plain: Actual Current entered for current calibration is low. Please check "
       "value or increase current.\n"},
      // Single cells where the page takes stack voltages.
      {{"calibrate", "voltage-temperature", "--cells", "3700,3700,3700", "--battery", "11100"},
       "message: plain: Voltage entered for cell voltage 2 appears low. Please check value "
       "entered.  Calibration will be terminated.\n"},
      {{"calibrate", "voltage-temperature", "--cells", "3700,7400"},
       "ombrelay: this gauge's page takes 3 stack voltages, --cells gives 2\n"},
      {{"calibrate", "voltage-temperature", "--cells", "3700,7400,11100"},
       "ombrelay: this gauge's page takes the battery voltage too: give --battery\n"},
      {{"calibrate", "voltage-temperature", "--temp", "ext3=25"},
       "ombrelay: this gauge's page has no row for sensor 3 (Ext 3 Temp)\n"},
      {{"calibrate", "voltage-temperature", "--temp", "ext3=25", "--report", "/tmp/never.json"},
       "ombrelay: this gauge's page has no row for sensor 3 (Ext 3 Temp)\n"
       "ombrelay: no report written to /tmp/never.json: the calibration's button was not "
       "pressed\n"},
      // The calibration is done; only its report is lost, and the run says so.
      {{"calibrate", "cc-offset", "--report", "/nonexistent/report.json"},
       "ombrelay: cannot write the report /nonexistent/report.json: No such file or directory\n"},
      {{"unseal", "--key", "0123"},
       "message: plain: Length of Key needs to be 32 Hex characters long.\n"},
      {{"authenticate", "--key", kNewKey}, ""},
      // The gauge takes a new key in Full Access only, so the answer to the new key's digest
      // does not match.
      {{"change-key", "unseal", "--key", kNewKey}, ""},
  };
  for (const Failure& failure : failures) {
    const CliRun run = bench.Run(failure.args);
    EXPECT_EQ(run.exit, 1) << failure.args[0];
    EXPECT_EQ(run.err, failure.line);
  }
  bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  const CliRun sealed = bench.Run({"--json", "identify"});
  EXPECT_EQ(sealed.exit, 1);
  EXPECT_EQ(sealed.json["outcome"], "failed");
  EXPECT_EQ(sealed.json["messages"][0]["text"].get<std::string>().rfind("Pack is sealed.", 0), 0);
}

TEST_F(CommandLineTest, AChangeAtATerminalIsAskedFirst) {
  const CliRun refused = bench.RunAtTerminal({"seal"}, "n\n");
  EXPECT_EQ(refused.exit, 1);
  EXPECT_EQ(refused.err,
            "ombrelay: about to seal the simulated morlin gauge. Continue? [y/N] "
            "ombrelay: nothing done\n");
  EXPECT_EQ(bench.gauge->GetSecurityMode(), sim::SecurityMode::Unsealed);
  EXPECT_EQ(bench.RunAtTerminal({"seal"}, "").exit, 1) << "no answer is no";

  // Reading asks nothing.
  EXPECT_EQ(bench.RunAtTerminal({"mode"}, "").err.find("Continue?"), std::string::npos);
  EXPECT_EQ(bench.RunAtTerminal({"seal"}, "y\n").exit, 0);
  EXPECT_EQ(bench.gauge->GetSecurityMode(), sim::SecurityMode::Sealed);
  const CliRun yes = bench.RunAtTerminal({"--yes", "unseal", "--key", AuthMorlin::kDefaultKey}, "");
  EXPECT_EQ(yes.exit, 0);
  EXPECT_EQ(yes.err.find("Continue?"), std::string::npos);
  // A script is not asked.
  EXPECT_EQ(bench.Run({"seal"}).exit, 0);
}

TEST_F(CommandLineTest, KeysStayOutOfReportsAndLogsUnlessShown) {
  ASSERT_EQ(bench.Run({"full-access", "--key", AuthMorlin::kDefaultKey}).exit, 0);
  const auto log = std::filesystem::path(::testing::TempDir()) / "ombrelay_cli_keys.jsonl";
  const auto read = [&log] {
    std::ifstream file(log);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };

  const CliRun masked =
      bench.Run({"--json", "--bus-log", log.string(), "change-key", "unseal", "--key", kNewKey});
  ASSERT_EQ(masked.exit, 0) << masked.err;
  EXPECT_EQ(masked.json["values"]["txtUnsealKeyNew"], std::string(32, '*'));
  const nlohmann::json& keyBlock = masked.json["writes"].back();
  EXPECT_EQ(keyBlock["command"], 0x2F);
  EXPECT_EQ(keyBlock["data"], std::string(32, '*'));
  for (const std::string& text : {masked.out, read()}) {
    EXPECT_EQ(text.find(kNewKey), std::string::npos);
    EXPECT_EQ(text.find(kNewKeyOnTheBus), std::string::npos);
  }
  const CliRun auth = bench.Run({"--json", "authenticate", "--key", AuthMorlin::kDefaultKey});
  EXPECT_EQ(auth.out.find(AuthMorlin::kDefaultKey), std::string::npos);

  const CliRun shown = bench.Run({"--json", "--show-keys", "--bus-log", log.string(), "change-key",
                                  "unseal", "--key", kNewKey});
  ASSERT_EQ(shown.exit, 0) << shown.err;
  EXPECT_EQ(shown.json["values"]["txtUnsealKeyNew"], kNewKey);
  EXPECT_EQ(shown.json["writes"].back()["data"], kNewKeyOnTheBus);
  EXPECT_NE(read().find(kNewKeyOnTheBus), std::string::npos);
}

std::vector<std::uint8_t> Bytes(const std::string& hex) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t at = 0; at + 1 < hex.size(); at += 2)
    bytes.push_back(static_cast<std::uint8_t>(std::stoi(hex.substr(at, 2), nullptr, 16)));
  return bytes;
}

// SHA-1 straight from OpenSSL, upper-case hex.
std::string Sha1(const std::vector<std::uint8_t>& bytes) {
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int length = 0;
  EVP_Digest(bytes.data(), bytes.size(), digest, &length, EVP_sha1(), nullptr);
  std::string hex;
  for (unsigned int i = 0; i < length; ++i) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    hex += kDigits[digest[i] >> 4];
    hex += kDigits[digest[i] & 0xF];
  }
  return hex;
}

std::vector<std::uint8_t> Joined(std::vector<std::uint8_t> first,
                                 const std::vector<std::uint8_t>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

TEST_F(CommandLineTest, DigestIsTheCalculatorsAndNeedsNoGauge) {
  const std::string key = AuthMorlin::kDefaultKey;
  const std::string message = "0123456789ABCDEF0123456789ABCDEF01234567";
  const std::string firstPass = Sha1(Joined(Bytes(key), Bytes(message)));
  struct Digest {
    std::vector<std::string> args;
    std::string expected;
  };
  const std::vector<Digest> digests = {
      {{"--mode", "msg", "--message", message}, Sha1(Bytes(message))},
      {{"--mode", "key-msg", "--key", key, "--message", message}, firstPass},
      {{"--key", key, "--message", message}, Sha1(Joined(Bytes(key), Bytes(firstPass)))},
      // Lower case reads the same; a short message counts zero bytes to its end.
      {{"--mode", "msg", "--message", "abcd"},
       Sha1(Joined(Bytes("ABCD"), std::vector<std::uint8_t>(18, 0)))},
  };
  for (const Digest& digest : digests) {
    std::vector<std::string> args = {"--json", "digest"};
    args.insert(args.end(), digest.args.begin(), digest.args.end());
    const CliRun run = bench.Run(args);
    EXPECT_EQ(run.exit, 0);
    EXPECT_EQ(run.json["values"]["txtDigest"], digest.expected) << digest.args[1];
    EXPECT_TRUE(run.json["writes"].empty());
    const std::string shownKey = run.json["values"]["txtKey"];
    EXPECT_EQ(shownKey.find_first_not_of('*'), std::string::npos) << shownKey;
  }
  // The key is masked where it stands, not wherever its digits recur.
  const CliRun run = bench.Run({"--json", "digest", "--key", "00", "--message", "0000"});
  EXPECT_EQ(run.json["values"]["txtMsg"], "0000");
}

TEST_F(CommandLineTest, StatusWatchPrintsEveryRoundUntilItsCount) {
  const std::int64_t start = bench.clock.NowMs();
  const CliRun run = bench.Run({"--json", "status", "--watch", "5", "--count", "3"});
  EXPECT_EQ(run.exit, 0);
  std::istringstream lines(run.out);
  int rounds = 0;
  for (std::string line; std::getline(lines, line); ++rounds)
    EXPECT_EQ(nlohmann::json::parse(line)["outcome"], "succeeded");
  EXPECT_EQ(rounds, 3);
  EXPECT_GE(bench.clock.NowMs() - start, 10'000);
  EXPECT_LT(bench.clock.NowMs() - start, 15'000);
}

TEST_F(CommandLineTest, ProgressShowsAtATerminalOnly) {
  const std::vector<std::string> args = {"--yes", "calibrate", "cc-offset"};
  EXPECT_EQ(bench.Run(args).err, "");
  const CliRun terminal = bench.RunAtTerminal(args, "");
  EXPECT_EQ(terminal.exit, 0);
  EXPECT_NE(terminal.err.find("ombrelay: waiting for the gauge, 1 s"), std::string::npos);
  EXPECT_TRUE(terminal.err.ends_with("\r\033[K")) << "the line is cleared at the end";
}

TEST_F(CommandLineTest, ListBusesSaysWhenThereAreNone) {
  const CliRun run = bench.Run({"--list-buses"});
  EXPECT_EQ(run.exit, 0);
  EXPECT_EQ(run.out, "no I2C buses (is the i2c-dev module loaded?)\n");
}

}  // namespace
}  // namespace ombrelay
