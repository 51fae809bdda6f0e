#include "cli/security_commands.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "cli/panel_input.h"
#include "panel/run_event.h"
#include "security/auth_morlin.h"

namespace ombrelay::cli {
namespace {

const std::array<const char*, 3> kModes = {"Sealed", "Unsealed", "Full Access"};

// A key box with its handlers.
struct KeyBox {
  TextBox AuthMorlin::*box;
  const char* name;
  void (AuthMorlin::*change)();
  void (AuthMorlin::*validate)(bool&);
};

// Types the key and moves the focus on; false when the box keeps the focus for a bad key.
bool TypeKey(AuthMorlin& panel, const KeyBox& key, const std::string& text, Report& report) {
  if (!Type(panel.*key.box, text)) {
    report.Fail("the key box does not take typing");
    return false;
  }
  (panel.*key.change)();
  bool cancel = false;
  (panel.*key.validate)(cancel);
  return !cancel;
}

void AddBox(Report& report, const TextBox& box, const char* name, const Label& heading,
            std::size_t keyCharacters = 0) {
  report.Add(name, heading.Caption, box.Text, keyCharacters);
}

// Selects the action and presses Go; the mode label is the verdict.
void Go(AuthMorlin& panel, std::int16_t option, const char* mode, Report& report) {
  panel.optionAction[static_cast<std::size_t>(option)].Value = true;
  panel.optionAction_Click(option);
  if (!Press(panel.btnGo, [&] { panel.btnGo_Click(); })) report.Fail("Go is not enabled");
  report.succeeded = report.failure.empty() && panel.lblSealStatus.Caption == mode;
  AddBox(report, panel.txtSealRandomfromDevice, "txtSealRandomfromDevice",
         panel.lblSealRandomNumber);
  // The key typed, then the challenge.
  AddBox(report, panel.txtSealRandomNumberandKey, "txtSealRandomNumberandKey",
         panel.lblSealRandomNumberKey, panel.txtUnsealKey.Text.size());
  AddBox(report, panel.txtDigest, "txtDigest", panel.lblSealDigest);
}

void Authenticate(AuthMorlin& panel, const std::string& key, Report& report) {
  SelectTab(panel.ssTabAuth, 1, [&](std::int16_t previous) { panel.ssTabAuth_Click(previous); });
  const KeyBox box{&AuthMorlin::txtAuthKey, "txtAuthKey", &AuthMorlin::txtAuthKey_Change,
                   &AuthMorlin::txtAuthKey_Validate};
  if (TypeKey(panel, box, key, report) &&
      !Press(panel.btnAuthenticate, [&] { panel.btnAuthenticate_Click(); }))
    report.Fail("Authenticate is not enabled");
  report.succeeded = panel.lblAuthenticationStatus.Caption == "Authentication Successful";
  AddBox(report, panel.txtAuthKey, "txtAuthKey", panel.lblAuthKey, kWholeText);
  AddBox(report, panel.txtAuthRandomNumber, "txtAuthRandomNumber", panel.lblRandomNumber);
  AddBox(report, panel.txtRndNumberandKey, "txtRndNumberandKey", panel.lblauthhostNumber,
         panel.txtAuthKey.Text.size());
  AddBox(report, panel.txtSHA1Result, "txtSHA1Result", panel.Label3);
  AddBox(report, panel.txtPartDigest, "txtPartDigest", panel.lblDeviceDigest);
  report.Add("lblAuthenticationStatus", "Authentication", panel.lblAuthenticationStatus.Caption);
}

// A box the key change fills, with the heading over it.
struct ResultBox {
  TextBox AuthMorlin::*box;
  const char* name;
  Label AuthMorlin::*heading;
};

// One band of the key change tab.
struct KeyChange {
  KeyBox newKey;
  Label AuthMorlin::*heading;
  void (AuthMorlin::*click)();
  Button AuthMorlin::*button;
  const char* success;
  std::array<ResultBox, 3> results;
};

KeyChange KeyChangeOf(KeyKind kind) {
  switch (kind) {
    case KeyKind::FullAccess:
      return {{&AuthMorlin::txtFullAcclKeyNew, "txtFullAcclKeyNew",
               &AuthMorlin::txtFullAcclKeyNew_Change, &AuthMorlin::txtFullAcclKeyNew_Validate},
              &AuthMorlin::Label8,
              &AuthMorlin::Change_FullAccl_Key_Click,
              &AuthMorlin::Change_FullAccl_Key,
              "Full Access Key Change Successful",
              {{{&AuthMorlin::txtChallengeReturnFullAcc, "txtChallengeReturnFullAcc",
                 &AuthMorlin::Label9},
                {&AuthMorlin::txtFullAcclRandomNumandKey, "txtFullAcclRandomNumandKey",
                 &AuthMorlin::Label10},
                {&AuthMorlin::txtNewFullAccKeyResponseDev, "txtNewFullAccKeyResponseDev",
                 &AuthMorlin::Label11}}}};
    case KeyKind::Authentication:
      return {
          {&AuthMorlin::txtAuthlKeyNew, "txtAuthlKeyNew", &AuthMorlin::txtAuthlKeyNew_Change,
           &AuthMorlin::txtAuthlKeyNew_Validate},
          &AuthMorlin::Label12,
          &AuthMorlin::Change_Auth_Key_Click,
          &AuthMorlin::Change_Auth_Key,
          "Authentication Change Successful",
          {{{&AuthMorlin::txtChallengeReturnAuth, "txtChallengeReturnAuth", &AuthMorlin::Label13},
            {&AuthMorlin::txtAuthRandomNumandKey, "txtAuthRandomNumandKey", &AuthMorlin::Label14},
            {&AuthMorlin::txtNewAuthKeyResponseDev, "txtNewAuthKeyResponseDev",
             &AuthMorlin::Label15}}}};
    case KeyKind::Unseal:
      break;
  }
  return {
      {&AuthMorlin::txtUnsealKeyNew, "txtUnsealKeyNew", &AuthMorlin::txtUnsealKeyNew_Change,
       &AuthMorlin::txtUnsealKeyNew_Validate},
      &AuthMorlin::Label2,
      &AuthMorlin::Change_Unseal_Key_Click,
      &AuthMorlin::Change_Unseal_Key,
      "Unseal Key Change Successful",
      {{{&AuthMorlin::txtChallengeReturnUnseal, "txtChallengeReturnUnseal", &AuthMorlin::Label5},
        {&AuthMorlin::txtUnsealRandomNumandKey, "txtUnsealRandomNumandKey", &AuthMorlin::Label6},
        {&AuthMorlin::txtNewUnsealKeyResponseDev, "txtNewUnsealKeyResponseDev",
         &AuthMorlin::Label7}}}};
}

void ChangeKey(AuthMorlin& panel, KeyKind kind, const std::string& key, Report& report) {
  SelectTab(panel.ssTabAuth, 2, [&](std::int16_t previous) { panel.ssTabAuth_Click(previous); });
  const KeyChange change = KeyChangeOf(kind);
  if (TypeKey(panel, change.newKey, key, report) &&
      !Press(panel.*change.button, [&] { (panel.*change.click)(); }))
    report.Fail("the key change button is not enabled");
  report.succeeded = panel.lblUnsealkeyStatus.Caption == change.success;
  report.Add(change.newKey.name, (panel.*change.heading).Caption, (panel.*change.newKey.box).Text,
             kWholeText);
  for (const ResultBox& result : change.results)
    report.Add(result.name, (panel.*result.heading).Caption, (panel.*result.box).Text);
  report.Add("lblUnsealkeyStatus", "Key change", panel.lblUnsealkeyStatus.Caption);
}

}  // namespace

void Secure(Session& session, const Options& options, Report& report) {
  AuthMorlin panel(session.GetHost(), session.GetPlatform());
  const std::size_t before = session.Messages().size();
  RunEvent([&] { panel.UserControl_Show(); });
  if (session.Messages().size() != before) return;

  const KeyBox unsealKey{&AuthMorlin::txtUnsealKey, "txtUnsealKey",
                         &AuthMorlin::txtUnsealKey_Change, &AuthMorlin::txtUnsealKey_Validate};
  switch (options.command) {
    case Command::Seal:
      Go(panel, 0, kModes[0], report);
      break;
    case Command::Unseal:
    case Command::FullAccess: {
      const bool full = options.command == Command::FullAccess;
      if (TypeKey(panel, unsealKey, options.key, report))
        Go(panel, full ? 2 : 1, kModes[full ? 2 : 1], report);
      AddBox(report, panel.txtUnsealKey, "txtUnsealKey", panel.lblUnSealKey, kWholeText);
      break;
    }
    case Command::Authenticate:
      Authenticate(panel, options.key, report);
      return;
    case Command::ChangeKey:
      ChangeKey(panel, options.keyKind, options.key, report);
      return;
    default:
      report.succeeded = std::ranges::find(kModes, panel.lblSealStatus.Caption) != kModes.end();
      break;
  }
  report.Add("lblSealStatus", panel.lblSealDeviceState.Caption, panel.lblSealStatus.Caption);
}

}  // namespace ombrelay::cli
