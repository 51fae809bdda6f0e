#pragma once
// The security panel: shows and changes the gauge's security mode, tests a gauge for a key and
// changes its three keys. It keeps no state beyond what its controls show.

#include <cstdint>
#include <span>
#include <string>

#include "security/exchange.h"
#include "security/security_controls.h"
#include "shell/host.h"

namespace ombrelay {

class Platform;

class AuthMorlin : public SecurityControls {
 public:
  // The key every key box holds after start-up.
  static constexpr const char* kDefaultKey = "7E1F00C2D94B36A8A8634BD9C2001FE7";

  // parent stands for the control's container, the host application that owns the bus.
  AuthMorlin(Host& parent, Platform& platform) : parent_(parent), platform_(platform) {}
  AuthMorlin(const AuthMorlin&) = delete;
  AuthMorlin& operator=(const AuthMorlin&) = delete;

  // Members for the host.
  std::string Caption() const { return "Auth"; }
  // Trims sStr in place; True when what is left is all hex digits.
  bool IsHex(std::string& sStr) const;
  // True when every character is a hex digit, white space anywhere aside.
  bool HexValidate(const std::string& sValue) const;
  void AUTHENTICATE(const std::string& txtMsg, const std::string& key, std::string& firstPassResult,
                    std::string& sha1Result, std::string& sha1ResultBigEndian,
                    std::span<std::uint8_t> digestLittleEndian) const;
  // 0 when the request went out, with the SEC1 and SEC0 bits in securityBits; 1 after a message.
  std::int32_t CheckOperationStatusSEC1andSEC0bits(std::int16_t& securityBits);
  std::int32_t MyHeight() const { return lblHWMarker.Top; }
  std::int32_t MyWidth() const { return lblHWMarker.Left; }

  // Events.
  void UserControl_Show();
  void UserControl_Terminate() {}
  void ssTabAuth_Click(std::int16_t PreviousTab);

  // Modes and sealing.
  void ShowDeviceMode();
  void SealDevice();
  void UnsealDevice(const std::string& mode);
  void btnGo_Click();
  void optionAction_Click(std::int16_t Index);

  // Authentication and key change.
  void btnAuthenticate_Click();
  void Change_Unseal_Key_Click();
  void Change_FullAccl_Key_Click();
  void Change_Auth_Key_Click();

  // Key entry.
  void txtUnsealKey_Change();
  void txtUnsealKey_Validate(bool& Cancel);
  void txtAuthKey_Change();
  void txtAuthKey_Validate(bool& Cancel);
  void txtUnsealKeyNew_Change();
  void txtUnsealKeyNew_Validate(bool& Cancel);
  void txtFullAcclKeyNew_Change();
  void txtFullAcclKeyNew_Validate(bool& Cancel);
  void txtAuthlKeyNew_Change();
  void txtAuthlKeyNew_Validate(bool& Cancel);

 private:
  // One column of the key change: the word and what it fills.
  struct KeyChange {
    std::int16_t word;
    TextBox& newKey;
    TextBox& challenge;
    TextBox& digest;
    TextBox& reply;
    const char* progress;
    const char* success;
    const char* failure;
  };

  // AUTHENTICATE of challenge under key, its three forms together.
  KeyedDigest DigestOf(const std::string& challenge, const std::string& key) const;
  void AttachHost();
  void InitSecurityPanel();
  void ChangeKey(const KeyChange& change);
  void KeyBoxChange(TextBox& box) const;
  void KeyBoxValidate(TextBox& box, const char* nonHexMessage, bool& Cancel) const;

  Host& parent_;
  Platform& platform_;
};

}  // namespace ombrelay
