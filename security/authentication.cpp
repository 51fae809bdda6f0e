// Authentication: the panel tests the gauge with a challenge of its own and compares the
// gauge's answer with the digest it computes under the key in txtAuthKey.

#include <array>

#include "gauge/manufacturer_access.h"
#include "gauge/value_conversion.h"
#include "security/auth_morlin.h"
#include "security/hex_text.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

// This exchange always goes to the fixed address, which start-up makes the target address too.
constexpr std::int16_t kAddress = 23;
constexpr std::size_t kKeyDigits = 32;
constexpr std::int16_t kBlockLength = 20;

}  // namespace

void AuthMorlin::btnAuthenticate_Click() {
  lblAuthenticationStatus.ForeColor = kVerdictBlack;
  lblAuthenticationStatus.Caption = "";
  if (TextCharacters(txtAuthKey.Text).size() != kKeyDigits) {
    MsgBox("Length of Authentication Key is not 32 characters.  Please check length of key.");
    return;
  }
  std::string key = txtAuthKey.Text;
  if (!IsHex(key)) {
    MsgBox("Authentication key contains non hex characters.  Please check key.");
    return;
  }
  lblAuthenticationStatus.Caption = "Authentication in Progress";
  btnAuthenticate.Enabled = false;
  g_oPlatform->Sleep(200);

  g_oPlatform->Randomize();
  std::string challengeText;
  for (int i = 0; i < kBlockLength; ++i) {
    const float value = g_oPlatform->Random() * 255.0F;
    challengeText += ByteHexString(static_cast<std::uint32_t>(RoundHalfEven(value)));
  }
  DrainBusErrors();
  txtAuthRandomNumber.Text = challengeText;
  txtRndNumberandKey.Text = txtAuthKey.Text + challengeText;

  std::array<std::uint8_t, 21> block{};
  FillTurned(challengeText, std::span(block).first(kBlockLength));
  g_oHost->WriteSMBusBlock(kAuthenticationCommand, block, kBlockLength, kAddress);
  g_oPlatform->Sleep(20);
  if (g_oHost->WriteSMBusBlock(kAuthenticationCommand, block, kBlockLength, kAddress) != 0) {
    btnAuthenticate.Enabled = true;
    MsgBox("Failed to Write Block!");
    return;
  }
  g_oHost->CheckForError();
  DelayMilliseconds(50);
  g_oHost->CheckForError();

  const KeyedDigest digest = DigestOf(challengeText, txtAuthKey.Text);
  std::array<std::uint8_t, 21> reply{};
  std::int16_t count = 0;
  if (g_oHost->ReadSMBusBlock_(kAuthenticationCommand, reply, count, kAddress) != 0) {
    btnAuthenticate.Enabled = true;
    MsgBox("Failed to Read Authentication Response from device.");
    return;
  }
  txtSHA1Result.Text = digest.sha1ResultBigEndian;
  const auto answer = std::span(reply).first(kBlockLength);
  txtPartDigest.Text = TurnedHexText(answer);
  if (HexText(answer) == digest.sha1Result) {
    lblAuthenticationStatus.ForeColor = kVerdictBlack;
    lblAuthenticationStatus.Caption = "Authentication Successful";
  } else {
    lblAuthenticationStatus.ForeColor = kVerdictRed;
    lblAuthenticationStatus.Caption = "Authentication Failed";
  }
  btnAuthenticate.Enabled = true;
}

}  // namespace ombrelay
