// Unseal and full access: the gauge hands out a challenge and the panel answers with its keyed
// digest under the key in txtUnsealKey. Whether the gauge took it shows only in its mode.

#include <array>

#include "gauge/manufacturer_access.h"
#include "security/auth_morlin.h"
#include "security/hex_text.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kUnsealWord = 0x0031;
constexpr std::int16_t kFullAccessWord = 0x0032;
constexpr std::int16_t kBlockLength = 20;

}  // namespace

void AuthMorlin::UnsealDevice(const std::string& mode) {
  ShowDeviceMode();
  std::int16_t word = 0;
  if (mode == "unseal") {
    word = kUnsealWord;
  } else if (mode == "fullaccess") {
    word = kFullAccessWord;
  } else {
    MsgBox("Operation unknown attempting to unseal device.");
    return;
  }
  if (WriteManufacturerAccess(word, g_iTargetAddress) != 0) {
    MsgBox("Not able to begin device unseal.  Please check communications with device.");
    btnGo.Enabled = true;
    return;
  }
  g_oPlatform->Sleep(20);

  std::array<std::uint8_t, 256> challenge{};
  std::int16_t count = 0;
  // Either a good status or the full count will do.
  if (g_oHost->ReadSMBusBlock_(kAuthenticationCommand, challenge, count, g_iTargetAddress) != 0 &&
      count != kBlockLength) {
    MsgBox("Not able to read challenge from pack. Please check communications with device.");
    btnGo.Enabled = true;
    return;
  }
  const std::string challengeText = TurnedHexText(std::span(challenge).first(kBlockLength));
  txtSealRandomfromDevice.Text = challengeText;

  const KeyedDigest digest = DigestOf(challengeText, txtUnsealKey.Text);
  g_oPlatform->Sleep(20);
  txtDigest.Text = digest.sha1ResultBigEndian;
  txtSealRandomNumberandKey.Text = txtUnsealKey.Text + challengeText;
  if (g_oHost->WriteSMBusBlock(kAuthenticationCommand, digest.digestLittleEndian, kBlockLength,
                               g_iTargetAddress) != 0) {
    MsgBox("Not able to send unseal response.");
  }
  g_oPlatform->PumpEvents();
  g_oPlatform->Sleep(20);
  g_oPlatform->PumpEvents();
}

}  // namespace ombrelay
