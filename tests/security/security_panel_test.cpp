// The security panel's shell: its controls as written out, the tab strip, a second show.

#include <gtest/gtest.h>

#include "security/sha1_calc.h"
#include "tests/support/control_texts.h"
#include "tests/support/expected_trace.h"
#include "tests/support/security_bench.h"

namespace ombrelay {
namespace {

using testing::MatchesTrace;
using testing::SecurityBench;

std::string Number(int value) {
  return std::to_string(value);
}

TEST(SecurityPanel, ItsControlsReadAsWrittenOut) {
  SecurityBench bench(std::nullopt);
  const AuthMorlin& p = bench.panel;
  testing::ControlTexts texts;
  texts.Line("Caption \"" + p.Caption() + "\" MyHeight " + Number(p.MyHeight()) + " MyWidth " +
             Number(p.MyWidth()));
  texts.Line("ssTabAuth \"" + p.ssTabAuth.TabCaptions.at(0) + "|" + p.ssTabAuth.TabCaptions.at(1) +
             "|" + p.ssTabAuth.TabCaptions.at(2) + "\" tab " + Number(p.ssTabAuth.Tab));
  const Label& marker = p.lblHWMarker;
  texts.Line("lblHWMarker \"" + marker.Caption + "\"" + (marker.Visible ? "" : " hidden") +
             " left " + Number(marker.Left) + " top " + Number(marker.Top) + " width " +
             Number(marker.Width) + " height " + Number(marker.Height));
#define ADD(control) texts.Add(#control, p.control)
  ADD(frmSeal);
  ADD(lblSealMain);
  ADD(lbldataformat);
  ADD(lblUnSealKey);
  ADD(txtUnsealKey);
  ADD(lblSealRandomNumber);
  ADD(txtSealRandomfromDevice);
  ADD(lblSealRandomNumberKey);
  ADD(txtSealRandomNumberandKey);
  ADD(lblSealDigest);
  ADD(txtDigest);
  ADD(frmUnseal);
  ADD(txtUnsealChange);
  ADD(optionAction);
  ADD(btnGo);
  ADD(lblSealDeviceState);
  ADD(lblSealStatus);
  ADD(Label4);
  ADD(frmAuth);
  ADD(lblDeviceAuthentication);
  ADD(Label1);
  ADD(lblAuthKey);
  ADD(txtAuthKey);
  ADD(lblRandomNumber);
  ADD(txtAuthRandomNumber);
  ADD(lblDeviceDigest);
  ADD(txtPartDigest);
  ADD(frmSha1Calc);
  ADD(lblauthhostNumber);
  ADD(txtRndNumberandKey);
  ADD(Label3);
  ADD(txtSHA1Result);
  ADD(btnAuthenticate);
  ADD(lblAuthenticationStatus);
  ADD(lblUnsealkeyStatus);
  ADD(Label2);
  ADD(txtUnsealKeyNew);
  ADD(Label5);
  ADD(txtChallengeReturnUnseal);
  ADD(Label6);
  ADD(txtUnsealRandomNumandKey);
  ADD(Label7);
  ADD(txtNewUnsealKeyResponseDev);
  ADD(Change_Unseal_Key);
  ADD(Label8);
  ADD(txtFullAcclKeyNew);
  ADD(Label9);
  ADD(txtChallengeReturnFullAcc);
  ADD(Label10);
  ADD(txtFullAcclRandomNumandKey);
  ADD(Label11);
  ADD(txtNewFullAccKeyResponseDev);
  ADD(Change_FullAccl_Key);
  ADD(Label12);
  ADD(txtAuthlKeyNew);
  ADD(Label13);
  ADD(txtChallengeReturnAuth);
  ADD(Label14);
  ADD(txtAuthRandomNumandKey);
  ADD(Label15);
  ADD(txtNewAuthKeyResponseDev);
  ADD(Change_Auth_Key);
#undef ADD
  texts.Line("bands at " + Number(p.Label2.Top) + " " + Number(p.Label8.Top) + " " +
             Number(p.Label12.Top));
  for (const auto& [name, line] :
       std::vector<std::pair<std::string, const Line*>>{{"Line1", &p.Line1},
                                                        {"Line2", &p.Line2},
                                                        {"Line3", &p.Line3},
                                                        {"Line4", &p.Line4},
                                                        {"Line5", &p.Line5},
                                                        {"Line6", &p.Line6}}) {
    texts.Line(name + " from " + Number(line->X1) + " " + Number(line->Y1) + " to " +
               Number(line->X2) + " " + Number(line->Y2));
  }
  EXPECT_TRUE(MatchesTrace(texts.Lines(), "security/panel-texts"));
}

TEST(SHA1Calc, ItsControlsReadAsWrittenOut) {
  const SHA1Calc form;
  testing::ControlTexts texts;
  texts.Line("SHA1Calc \"" + form.Caption + "\" " + Number(SHA1Calc::kClientWidth) + " x " +
             Number(SHA1Calc::kClientHeight));
  texts.Add("Label1", form.Label1);
  texts.Add("Label4", form.Label4);
  texts.Add("txtKey", form.txtKey);
  texts.Add("Label2", form.Label2);
  texts.Add("Label5", form.Label5);
  texts.Add("txtMsg", form.txtMsg);
  texts.Add("cmdSHA1Msg", form.cmdSHA1Msg);
  texts.Add("cmdSHA1KeyMsg", form.cmdSHA1KeyMsg);
  texts.Add("cmdTarvexHMAC", form.cmdTarvexHMAC);
  texts.Add("Label3", form.Label3);
  texts.Add("txtDigest", form.txtDigest);
  texts.Add("cmdQuit", form.cmdQuit);
  EXPECT_TRUE(MatchesTrace(texts.Lines(), "security/calculator-texts"));
}

TEST(SecurityPanel, LeavingTheAuthenticationTabReadsTheMode) {
  SecurityBench bench;
  bench.StartUp();
  for (const std::int16_t left : {0, 1, 2}) {
    bench.sim.Restart();
    bench.panel.ssTabAuth_Click(left);
    EXPECT_EQ(bench.sim.host.Operations().empty(), left != 1) << "left tab " << left;
  }
}

TEST(SecurityPanel, ASecondShowPutsTheDefaultKeyBackAndReadsAgain) {
  SecurityBench bench;
  bench.StartUp();
  for (TextBox* box : bench.panel.KeyBoxes())
    box->Text = "00112233445566778899AABBCCDDEEFF";
  bench.panel.ssTabAuth.Tab = 2;
  bench.panel.UserControl_Show();
  for (TextBox* box : bench.panel.KeyBoxes())
    EXPECT_EQ(box->Text, AuthMorlin::kDefaultKey);
  EXPECT_TRUE(MatchesTrace(bench.Trace(), "security/startup-again-morlin"));
}

}  // namespace
}  // namespace ombrelay
