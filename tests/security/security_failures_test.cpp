// What each failure of unseal, authentication and key change shows, where two fail at once
// which is told, and what the boxes keep.

#include <gtest/gtest.h>

#include "tests/support/expected_trace.h"
#include "tests/support/security_bench.h"

namespace ombrelay {
namespace {

using sim::SecurityMode;
using sim::Transfer;
using testing::OnCommand;
using testing::OnWord;
using testing::SecurityBench;
using testing::Shown;

constexpr std::int32_t kAuthentication = 0x2F;
constexpr const char* kChallengeNotRead =
    "Not able to read challenge from pack. Please check communications with device.";

std::vector<Shown> Plain(std::initializer_list<const char*> texts) {
  std::vector<Shown> shown;
  for (const char* text : texts)
    shown.push_back({text, MessageStyle::Plain});
  return shown;
}

int Count(const SecurityBench& bench, const std::string& op) {
  return static_cast<int>(bench.sim.OperationsNamed(op).size());
}

SecurityBench& Sealed(SecurityBench& bench) {
  bench.sim.gauge->SetSecurityMode(SecurityMode::Sealed);
  bench.StartUp();
  return bench;
}

TEST(Unseal, TellsEachFailureAndGoesOnOnlyAfterTheResponse) {
  {
    // The word fails, and the challenge read would too: only the first is told.
    SecurityBench bench;
    Sealed(bench);
    bench.sim.After(OnWord(0x0054), 3, [&] {
      bench.sim.gauge->FailNext(Transfer::WordWrite, 1);
      bench.sim.gauge->FailNext(Transfer::BlockRead, 1);
    });
    bench.Go(1);
    EXPECT_EQ(
        testing::Boxes(bench.sim.platform),
        Plain({"Not able to begin device unseal.  Please check communications with device."}));
    EXPECT_EQ(Count(bench, "ReadSMBusBlock_"), 3 + 1) << "status blocks only";
    EXPECT_TRUE(bench.panel.btnGo.Enabled);
  }
  {
    SecurityBench bench;
    Sealed(bench);
    bench.sim.After(OnWord(0x0031), 1, [&] { bench.sim.gauge->FailNext(Transfer::BlockRead, 1); });
    bench.Go(1);
    EXPECT_EQ(testing::Boxes(bench.sim.platform), Plain({kChallengeNotRead}));
    EXPECT_EQ(Count(bench, "WriteSMBusBlock"), 0);
  }
  {
    // A short challenge with a good status passes: the missing high bytes read 0 at the front.
    SecurityBench bench;
    Sealed(bench);
    bench.sim.After(OnWord(0x0031), 1,
                    [&] { bench.sim.gauge->AnswerNextBlockReadsWithLength(1, 12); });
    bench.Go(1);
    EXPECT_TRUE(bench.sim.MessageTexts().empty());
    EXPECT_EQ(bench.panel.txtSealRandomfromDevice.Text.substr(0, 16), std::string(16, '0'));
    EXPECT_EQ(Count(bench, "WriteSMBusBlock"), 1);
  }
  {
    // The response fails: told, and the mode is still read and shown at the end.
    SecurityBench bench;
    Sealed(bench);
    bench.sim.After(OnWord(0x0031), 1, [&] { bench.sim.gauge->FailNext(Transfer::BlockWrite, 1); });
    bench.Go(1);
    EXPECT_EQ(testing::Boxes(bench.sim.platform), Plain({"Not able to send unseal response."}));
    EXPECT_EQ(bench.panel.lblSealStatus.Caption, "Sealed");
    EXPECT_EQ(bench.sim.OperationsNamed("WriteSMBusWord_").back().word, 0x0054);
  }
  {
    SecurityBench bench;
    bench.StartUp();
    bench.panel.UnsealDevice("open");
    EXPECT_EQ(testing::Boxes(bench.sim.platform),
              Plain({"Operation unknown attempting to unseal device."}));
    EXPECT_TRUE(testing::MatchesTrace(bench.Trace(), "security/unseal-unknown-word"));
  }
}

TEST(Authenticate, RefusesABadKeyLengthFirstWithoutTouchingTheBus) {
  SecurityBench bench;
  bench.StartUp();
  const std::string kLength =
      "Length of Authentication Key is not 32 characters.  Please check length of key.";
  const std::string kNonHex = "Authentication key contains non hex characters.  Please check key.";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"7E1F00C2D94B36A8A8634BD9C2001FE", kLength},
      {"7E1F00C2D94B36A8A8634BD9C2001FX", kLength},
      {"7E1F00C2D94B36A8A8634BD9C2001FEX", kNonHex},
      {"7E1F00C2D94B36A8 8634BD9C2001FE7", kNonHex},
  };
  for (const auto& [key, message] : cases) {
    bench.sim.Restart();
    bench.panel.lblAuthenticationStatus.Caption = "Authentication Failed";
    bench.panel.lblAuthenticationStatus.ForeColor = 0xFF0000;
    bench.panel.txtAuthKey.Text = key;
    bench.panel.btnAuthenticate_Click();
    EXPECT_EQ(testing::Boxes(bench.sim.platform),
              (std::vector<Shown>{{message, MessageStyle::Plain}}))
        << key;
    EXPECT_TRUE(bench.sim.host.Operations().empty());
    EXPECT_EQ(bench.panel.lblAuthenticationStatus.Caption, "");
    EXPECT_EQ(bench.panel.lblAuthenticationStatus.ForeColor, 0x000000U);
    EXPECT_TRUE(bench.panel.btnAuthenticate.Enabled);
  }
}

// The challenge block the panel sent, as the trace shows it.
std::string ChallengeBlock(const SecurityBench& bench) {
  const std::string& text = bench.panel.txtAuthRandomNumber.Text;
  std::string block;
  for (std::size_t at = text.size(); at >= 2; at -= 2)
    block += text.substr(at - 2, 2);
  return block;
}

TEST(Authenticate, DrainsErrorsFirstAndTellsAFailedWriteOrRead) {
  {
    SecurityBench bench;
    bench.StartUp();
    bench.sim.gauge->QueuePendingErrors(3);
    bench.sim.After(OnCommand(kAuthentication), 1,
                    [&] { bench.sim.gauge->FailNext(Transfer::BlockWrite, 1); });
    bench.panel.btnAuthenticate_Click();
    EXPECT_TRUE(testing::MatchesTrace(bench.Trace(), "security/authenticate-write-fails",
                                      {{"challenge", ChallengeBlock(bench)}}));
  }
  {
    SecurityBench bench;
    bench.StartUp();
    bench.panel.txtSHA1Result.Text = "OLD DIGEST";
    bench.panel.txtPartDigest.Text = "OLD ANSWER";
    bench.sim.After(OnCommand(kAuthentication), 2,
                    [&] { bench.sim.gauge->FailNext(Transfer::BlockRead, 1); });
    bench.panel.btnAuthenticate_Click();
    EXPECT_TRUE(testing::MatchesTrace(bench.Trace(), "security/authenticate-read-fails",
                                      {{"challenge", ChallengeBlock(bench)}}));
    EXPECT_EQ(bench.panel.txtSHA1Result.Text, "OLD DIGEST");
    EXPECT_EQ(bench.panel.txtPartDigest.Text, "OLD ANSWER");
  }
}

TEST(ChangeKey, DemandsAFullChallengeAndGoesOnAfterAFailedKeyWrite) {
  {
    // A short challenge with a good status is refused here; the key is never sent.
    SecurityBench bench;
    bench.StartUp();
    bench.sim.After(OnWord(0x0035), 1,
                    [&] { bench.sim.gauge->AnswerNextBlockReadsWithLength(1, 19); });
    bench.panel.Change_Unseal_Key_Click();
    EXPECT_EQ(testing::Boxes(bench.sim.platform), Plain({kChallengeNotRead}));
    EXPECT_EQ(Count(bench, "WriteSMBusBlock"), 0);
    EXPECT_EQ(bench.panel.lblUnsealkeyStatus.Caption, "Changing Unsealkey...");
  }
  {
    // The key write fails: told, then the answer is read and compared all the same.
    SecurityBench bench;
    bench.sim.gauge->SetSecurityMode(SecurityMode::FullAccess);
    bench.StartUp();
    bench.panel.txtFullAcclKeyNew.Text = "00112233445566778899AABBCCDDEEFF";
    bench.sim.After(OnWord(0x0036), 1, [&] { bench.sim.gauge->FailNext(Transfer::BlockWrite, 1); });
    bench.panel.Change_FullAccl_Key_Click();
    EXPECT_EQ(testing::Boxes(bench.sim.platform), Plain({"Not able to send new key to device."}));
    EXPECT_EQ(bench.panel.lblUnsealkeyStatus.Caption, "Full Access Key Change Failed");
    EXPECT_EQ(bench.panel.lblUnsealkeyStatus.ForeColor, 0xFF0000U);
    // The red stays on the next progress text, until the next verdict.
    bench.sim.After(OnWord(0x0037), 1, [&] { bench.sim.gauge->FailNext(Transfer::BlockRead, 1); });
    bench.panel.Change_Auth_Key_Click();
    EXPECT_EQ(bench.panel.lblUnsealkeyStatus.Caption, "Changing Authentication Key ...");
    EXPECT_EQ(bench.panel.lblUnsealkeyStatus.ForeColor, 0xFF0000U);
  }
  {
    SecurityBench bench;
    bench.StartUp();
    bench.panel.txtNewAuthKeyResponseDev.Text = "OLD ANSWER";
    bench.sim.After(OnCommand(kAuthentication), 2,
                    [&] { bench.sim.gauge->FailNext(Transfer::BlockRead, 1); });
    bench.panel.Change_Auth_Key_Click();
    EXPECT_EQ(testing::Boxes(bench.sim.platform), Plain({kChallengeNotRead}));
    EXPECT_EQ(bench.panel.txtNewAuthKeyResponseDev.Text, "OLD ANSWER");
    EXPECT_EQ(bench.panel.lblUnsealkeyStatus.Caption, "New key Sent to Device");
  }
}

}  // namespace
}  // namespace ombrelay
