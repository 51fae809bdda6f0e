#pragma once
// Every control of the security panel, under its name, with its caption, tooltip, limits, font
// and colour as the panel is created. The key boxes start empty: start-up fills them.

#include <array>

#include "shell/controls.h"

namespace ombrelay {

struct SecurityControls {
  SecurityControls();

  // The panel's client area, in twips, and its background.
  static constexpr int kClientWidth = 11595;
  static constexpr int kClientHeight = 7500;
  static constexpr std::uint32_t kBackColor = 0xE0E0E0;

  // The five boxes that take a key, in the order start-up fills them.
  std::array<TextBox*, 5> KeyBoxes() {
    return {&txtUnsealKey, &txtAuthKey, &txtUnsealKeyNew, &txtFullAcclKeyNew, &txtAuthlKeyNew};
  }

  TabStrip ssTabAuth;
  Label lblHWMarker;

  // Tab 0: seal, unseal and full access.
  Frame frmSeal;
  Label lblSealMain;
  Label lbldataformat;
  Label lblUnSealKey;
  TextBox txtUnsealKey;
  Label lblSealRandomNumber;
  TextBox txtSealRandomfromDevice;
  Label lblSealRandomNumberKey;
  TextBox txtSealRandomNumberandKey;
  Label lblSealDigest;
  TextBox txtDigest;
  Frame frmUnseal;
  Frame txtUnsealChange;
  std::array<OptionButton, 3> optionAction;
  Button btnGo;
  Label lblSealDeviceState;
  Label lblSealStatus;
  Label Label4;

  // Tab 1: authentication.
  Frame frmAuth;
  Label lblDeviceAuthentication;
  Label Label1;
  Label lblAuthKey;
  TextBox txtAuthKey;
  Label lblRandomNumber;
  TextBox txtAuthRandomNumber;
  Label lblDeviceDigest;
  TextBox txtPartDigest;
  Frame frmSha1Calc;
  Label lblauthhostNumber;
  TextBox txtRndNumberandKey;
  Label Label3;
  TextBox txtSHA1Result;
  Button btnAuthenticate;
  Label lblAuthenticationStatus;

  // Tab 2: key change, three bands under one status label.
  Label lblUnsealkeyStatus;
  Label Label2;
  TextBox txtUnsealKeyNew;
  Label Label5;
  TextBox txtChallengeReturnUnseal;
  Label Label6;
  TextBox txtUnsealRandomNumandKey;
  Label Label7;
  TextBox txtNewUnsealKeyResponseDev;
  Button Change_Unseal_Key;
  Label Label8;
  TextBox txtFullAcclKeyNew;
  Label Label9;
  TextBox txtChallengeReturnFullAcc;
  Label Label10;
  TextBox txtFullAcclRandomNumandKey;
  Label Label11;
  TextBox txtNewFullAccKeyResponseDev;
  Button Change_FullAccl_Key;
  Label Label12;
  TextBox txtAuthlKeyNew;
  Label Label13;
  TextBox txtChallengeReturnAuth;
  Label Label14;
  TextBox txtAuthRandomNumandKey;
  Label Label15;
  TextBox txtNewAuthKeyResponseDev;
  Button Change_Auth_Key;
  Line Line1;
  Line Line2;
  Line Line3;
  Line Line4;
  Line Line5;
  Line Line6;
};

}  // namespace ombrelay
