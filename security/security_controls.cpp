#include "security/security_controls.h"

#include <string>

namespace ombrelay {
namespace {

constexpr int kKeyLength = 32;
constexpr int kChallengeLength = 40;
constexpr int kKeyAndChallengeLength = 72;
constexpr std::uint32_t kStatusBackColor = 0xC0C0FF;
constexpr const char* kSansSerif = "MS Sans Serif";
constexpr const char* kKeyFont = "Courier";
constexpr float kTextSize = 8.25F;
constexpr float kBoxSize = 9.75F;
constexpr float kHeadingSize = 13.5F;
constexpr float kStatusSize = 12.0F;
constexpr const char* kMostSignificantFirst = "All displayed data is most significant digit first.";
constexpr const char* kKeyTip = "Key 32 Hex Characters";

void SetFont(Control& control, const char* name, float size, bool bold) {
  control.FontName = name;
  control.FontSize = size;
  control.FontBold = bold;
}

void MakeLabel(Label& label, const std::string& caption, float size = kTextSize, bool bold = true) {
  label.Caption = caption;
  SetFont(label, kSansSerif, size, bold);
}

void MakeBox(TextBox& box, int maxLength, bool readOnly, const std::string& tip = {}) {
  SetFont(box, kKeyFont, kBoxSize, false);
  box.MaxLength = maxLength;
  box.Locked = readOnly;
  box.ToolTipText = tip;
}

struct Band {
  Label& keyHeading;
  const char* keyCaption;
  TextBox& key;
  Label& challengeHeading;
  TextBox& challenge;
  Label& digestHeading;
  TextBox& digest;
  Label& answerHeading;
  TextBox& answer;
  Button& button;
  const char* buttonCaption;
  int top;
};

void MakeBand(const Band& band) {
  MakeLabel(band.keyHeading, band.keyCaption, kTextSize, false);
  MakeLabel(band.challengeHeading, "Challenge from Device", kTextSize, false);
  MakeLabel(band.digestHeading, "Hash : New Key + Challenge", kTextSize, false);
  MakeLabel(band.answerHeading, "New Unseal Key Hash :  Device", kTextSize, false);
  for (Label* heading :
       {&band.keyHeading, &band.challengeHeading, &band.digestHeading, &band.answerHeading})
    heading->Top = band.top;
  MakeBox(band.key, kKeyLength, false);
  for (TextBox* box : {&band.challenge, &band.digest, &band.answer})
    MakeBox(*box, 0, false);
  band.button.Caption = band.buttonCaption;
  band.button.Top = band.top;
}

}  // namespace

SecurityControls::SecurityControls() {
  ssTabAuth.TabCaptions = {"Seal/UnSeal/Full Access", "Authentication", "Change Key"};
  ssTabAuth.Tab = 1;
  lblHWMarker.Caption = "Hardware Marker";
  lblHWMarker.Visible = false;
  lblHWMarker.Left = 12225;
  lblHWMarker.Top = 7800;
  lblHWMarker.Width = 600;
  lblHWMarker.Height = 345;

  frmSeal.ToolTipText = "Key 32 Hex Characters in Length";
  MakeLabel(lblSealMain, "Seal/Unseal/Full Access", kHeadingSize);
  MakeLabel(lbldataformat, kMostSignificantFirst, kTextSize, false);
  lbldataformat.Alignment = TextAlignment::Centre;
  MakeLabel(lblUnSealKey, "Key (128 bits)");
  MakeBox(txtUnsealKey, kKeyLength, false, kKeyTip);
  MakeLabel(lblSealRandomNumber, "Random Number from device");
  MakeBox(txtSealRandomfromDevice, kChallengeLength, true, kKeyTip);
  MakeLabel(lblSealRandomNumberKey, "Random Number + Key");
  MakeBox(txtSealRandomNumberandKey, kKeyAndChallengeLength, true, "Random number and Key");
  MakeLabel(lblSealDigest, "Digest");
  MakeBox(txtDigest, kChallengeLength, true, kKeyTip);
  txtUnsealChange.Caption = "Select mode";
  optionAction[0].Caption = "Seal";
  optionAction[1].Caption = "Unseal";
  optionAction[1].Value = true;
  optionAction[2].Caption = "Full Access";
  btnGo.Caption = "Go";
  MakeLabel(lblSealDeviceState, "Current Device Mode", kBoxSize);
  MakeLabel(lblSealStatus, "", kStatusSize);
  lblSealStatus.Alignment = TextAlignment::Centre;
  lblSealStatus.BackColor = kStatusBackColor;
  MakeLabel(Label4, "Label4");
  Label4.Width = 30;
  Label4.Height = 30;

  MakeLabel(lblDeviceAuthentication, "Device Authentication", kHeadingSize);
  MakeLabel(Label1, kMostSignificantFirst, kTextSize, false);
  Label1.Alignment = TextAlignment::Centre;
  MakeLabel(lblAuthKey, "Key  (128 bits)");
  MakeBox(txtAuthKey, kKeyLength, false, kKeyTip);
  MakeLabel(lblRandomNumber, "Random Number sent to device");
  MakeBox(txtAuthRandomNumber, kChallengeLength, true, "Random Number");
  MakeLabel(lblDeviceDigest, "Device Digest");
  MakeBox(txtPartDigest, kChallengeLength, true, "Device Digest");
  frmSha1Calc.Caption = "Host SHA1 Calculation";
  SetFont(frmSha1Calc, kSansSerif, kBoxSize, true);
  MakeLabel(lblauthhostNumber, "Random Number + Key");
  MakeBox(txtRndNumberandKey, 0, true, "Random Number + Key");
  MakeLabel(Label3, "Host SHA1 Digest");
  MakeBox(txtSHA1Result, kChallengeLength, true, "Host SHA1 Result");
  btnAuthenticate.Caption = "Authenticate";
  btnAuthenticate.ToolTipText = "Authenticate";
  MakeLabel(lblAuthenticationStatus, "Progress", kStatusSize);

  MakeLabel(lblUnsealkeyStatus, "", kStatusSize);
  MakeBand({Label2, "New Unseal Key", txtUnsealKeyNew, Label5, txtChallengeReturnUnseal, Label6,
            txtUnsealRandomNumandKey, Label7, txtNewUnsealKeyResponseDev, Change_Unseal_Key,
            "Change Unseal key", 1920});
  MakeBand({Label8, "New Full Access Key", txtFullAcclKeyNew, Label9, txtChallengeReturnFullAcc,
            Label10, txtFullAcclRandomNumandKey, Label11, txtNewFullAccKeyResponseDev,
            Change_FullAccl_Key, "Change Full Access Key", 3720});
  MakeBand({Label12, "New Auth Key ", txtAuthlKeyNew, Label13, txtChallengeReturnAuth, Label14,
            txtAuthRandomNumandKey, Label15, txtNewAuthKeyResponseDev, Change_Auth_Key,
            "Change Authentication Key", 5520});
  const std::array<Line*, 6> lines = {&Line1, &Line2, &Line3, &Line4, &Line5, &Line6};
  const std::array<int, 6> rows = {2880, 1560, 3240, 4680, 5160, 6480};
  for (std::size_t i = 0; i < lines.size(); ++i) {
    lines[i]->X1 = 360;
    lines[i]->X2 = 11160;
    lines[i]->Y1 = rows[i];
    lines[i]->Y2 = rows[i];
  }
}

}  // namespace ombrelay
