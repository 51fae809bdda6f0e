// Key change: the gauge gives a challenge, the panel sends the new key, and the gauge answers
// with the digest of that challenge under the key it now holds.

#include <array>

#include "gauge/manufacturer_access.h"
#include "security/auth_morlin.h"
#include "security/hex_text.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kChallengeLength = 20;
constexpr std::int16_t kKeyLength = 16;
constexpr const char* kChallengeNotRead =
    "Not able to read challenge from pack. Please check communications with device.";

}  // namespace

void AuthMorlin::Change_Unseal_Key_Click() {
  ChangeKey({0x0035, txtUnsealKeyNew, txtChallengeReturnUnseal, txtUnsealRandomNumandKey,
             txtNewUnsealKeyResponseDev, "Changing Unsealkey...", "Unseal Key Change Successful",
             "Unseal Key Change Failed"});
}

void AuthMorlin::Change_FullAccl_Key_Click() {
  ChangeKey({0x0036, txtFullAcclKeyNew, txtChallengeReturnFullAcc, txtFullAcclRandomNumandKey,
             txtNewFullAccKeyResponseDev, "Changing Full Access Key ...",
             "Full Access Key Change Successful", "Full Access Key Change Failed"});
}

void AuthMorlin::Change_Auth_Key_Click() {
  ChangeKey({0x0037, txtAuthlKeyNew, txtChallengeReturnAuth, txtAuthRandomNumandKey,
             txtNewAuthKeyResponseDev, "Changing Authentication Key ...",
             "Authentication Change Successful", "Authentication Change Failed"});
}

void AuthMorlin::ChangeKey(const KeyChange& change) {
  lblUnsealkeyStatus.Caption = change.progress;
  const std::string newKey = change.newKey.Text;
  std::array<std::uint8_t, 17> keyBlock{};
  FillTurned(newKey, std::span(keyBlock).first(kKeyLength));
  // The challenge read decides whether the word got through.
  WriteManufacturerAccess(change.word, g_iTargetAddress);
  g_oPlatform->Sleep(20);

  std::array<std::uint8_t, 256> challenge{};
  std::int16_t count = 0;
  if (g_oHost->ReadSMBusBlock_(kAuthenticationCommand, challenge, count, g_iTargetAddress) != 0 ||
      count != kChallengeLength) {
    MsgBox(kChallengeNotRead);
    return;
  }
  const std::string challengeText = TurnedHexText(std::span(challenge).first(kChallengeLength));
  change.challenge.Text = challengeText;
  const KeyedDigest digest = DigestOf(challengeText, newKey);
  g_oPlatform->Sleep(20);
  change.digest.Text = digest.sha1ResultBigEndian;

  if (g_oHost->WriteSMBusBlock(kAuthenticationCommand, keyBlock, kKeyLength, g_iTargetAddress) !=
      0) {
    MsgBox("Not able to send new key to device.");
  } else {
    lblUnsealkeyStatus.Caption = "New key Sent to Device";
  }
  g_oPlatform->PumpEvents();
  g_oPlatform->Sleep(250);
  g_oPlatform->PumpEvents();

  std::array<std::uint8_t, 256> reply{};
  if (g_oHost->ReadSMBusBlock_(kAuthenticationCommand, reply, count, g_iTargetAddress) != 0) {
    MsgBox(kChallengeNotRead);
    return;
  }
  const auto answer = std::span(reply).first(kChallengeLength);
  change.reply.Text = TurnedHexText(answer);
  const bool accepted = HexText(answer) == digest.sha1Result;
  lblUnsealkeyStatus.ForeColor = accepted ? kVerdictBlack : kVerdictRed;
  lblUnsealkeyStatus.Caption = accepted ? change.success : change.failure;
}

}  // namespace ombrelay
