#include "security/auth_morlin.h"

#include "config/device_configuration.h"
#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kTargetAddress = 23;
constexpr std::int16_t kAuthenticationTab = 1;

}  // namespace

void AuthMorlin::UserControl_Show() {
  AttachHost();
  InitSecurityPanel();
}

void AuthMorlin::AttachHost() {
  g_oHost = &parent_;
  g_oPlatform = &platform_;
  // A selection the program makes counts as the user's, click handler and all.
  const std::int16_t previousTab = static_cast<std::int16_t>(ssTabAuth.Tab);
  ssTabAuth.Tab = 0;
  if (previousTab != 0) ssTabAuth_Click(previousTab);
}

void AuthMorlin::InitSecurityPanel() {
  // Setting a box's text runs its Change handler, as typing does.
  const std::array<void (AuthMorlin::*)(), 5> changed = {
      &AuthMorlin::txtUnsealKey_Change, &AuthMorlin::txtAuthKey_Change,
      &AuthMorlin::txtUnsealKeyNew_Change, &AuthMorlin::txtFullAcclKeyNew_Change,
      &AuthMorlin::txtAuthlKeyNew_Change};
  const std::array<TextBox*, 5> boxes = KeyBoxes();
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    if (boxes[i]->Text == kDefaultKey) continue;
    boxes[i]->Text = kDefaultKey;
    (this->*changed[i])();
  }
  g_oHost = &parent_;
  g_iTargetAddress = kTargetAddress;
  LoadConfigurationforSecurityPanel();
  g_oPlatform->Sleep(30);

  // A test of the line only: what the reads return is not used.
  std::string text;
  g_oHost->ReadSMBusBlock(kAuthenticationCommand, text, g_iTargetAddress);
  if (g_oHost->ReadSMBusBlock(kAuthenticationCommand, text, g_iTargetAddress) != 0) {
    MsgBox(
        "Quvara is not able to communicate with device. Please establish communications with "
        "device. Close and restart Quvara after device communications is re-established.  "
        "Quvara will correctly detect the device and Firmware version after restart.",
        MessageStyle::Error);
  }
  ShowDeviceMode();
}

void AuthMorlin::ssTabAuth_Click(std::int16_t PreviousTab) {
  if (PreviousTab == kAuthenticationTab) ShowDeviceMode();
}

}  // namespace ombrelay
