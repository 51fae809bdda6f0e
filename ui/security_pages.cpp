#include "ui/security_pages.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/widget_factory.h"

namespace ombrelay {
namespace {

constexpr int kCaptionSpacing = 1;
// The mode shows in a box wide enough for its longest word, "Last Operation Failed".
constexpr int kModeWidth = 200;
// Between the Go button and the mode it changes.
constexpr int kModeGap = 24;

// A box under its caption.
QLayout* Captioned(QLabel* caption, QWidget* box) {
  auto* column = new QVBoxLayout;
  column->setSpacing(kCaptionSpacing);
  column->addWidget(caption);
  column->addWidget(box);
  return column;
}

QGroupBox* MakeSealFrame(AuthMorlin& panel, WidgetFactory& make) {
  QGroupBox* frame = make.MakeFrame(panel.frmSeal, "frmSeal");
  auto* column = new QVBoxLayout(frame);
  column->addWidget(make.MakeLabel(panel.lblSealMain, "lblSealMain"));
  column->addWidget(make.MakeLabel(panel.lbldataformat, "lbldataformat"));
  column->addLayout(
      Captioned(make.MakeLabel(panel.lblUnSealKey, "lblUnSealKey"),
                make.MakeHexBox(panel.txtUnsealKey, "txtUnsealKey", kKeyDigits,
                                KeyBoxHandlers(panel, &AuthMorlin::txtUnsealKey_Change,
                                               &AuthMorlin::txtUnsealKey_Validate))));
  column->addLayout(Captioned(
      make.MakeLabel(panel.lblSealRandomNumber, "lblSealRandomNumber"),
      make.MakeHexBox(panel.txtSealRandomfromDevice, "txtSealRandomfromDevice", kDigestDigits)));
  column->addLayout(
      Captioned(make.MakeLabel(panel.lblSealRandomNumberKey, "lblSealRandomNumberKey"),
                make.MakeHexBox(panel.txtSealRandomNumberandKey, "txtSealRandomNumberandKey",
                                kKeyAndChallengeDigits)));
  column->addLayout(Captioned(make.MakeLabel(panel.lblSealDigest, "lblSealDigest"),
                              make.MakeHexBox(panel.txtDigest, "txtDigest", kDigestDigits)));
  return frame;
}

QGroupBox* MakeModeChoice(AuthMorlin& panel, WidgetFactory& make) {
  QGroupBox* frame = make.MakeFrame(panel.txtUnsealChange, "txtUnsealChange");
  auto* column = new QVBoxLayout(frame);
  for (std::size_t i = 0; i < panel.optionAction.size(); ++i) {
    const auto index = static_cast<std::int16_t>(i);
    column->addWidget(make.MakeOptionButton(panel.optionAction[i], Indexed("optionAction", i),
                                            [&panel, index] { panel.optionAction_Click(index); }));
  }
  return frame;
}

QGroupBox* MakeUnsealFrame(AuthMorlin& panel, WidgetFactory& make) {
  QGroupBox* frame = make.MakeFrame(panel.frmUnseal, "frmUnseal");
  auto* row = new QHBoxLayout(frame);
  row->addWidget(MakeModeChoice(panel, make));
  row->addWidget(make.MakeButton(panel.btnGo, "btnGo", [&panel] { panel.btnGo_Click(); }));
  row->addSpacing(kModeGap);

  auto* mode = new QVBoxLayout;
  mode->addWidget(make.MakeLabel(panel.lblSealDeviceState, "lblSealDeviceState"));
  QLabel* status = make.MakeLabel(panel.lblSealStatus, "lblSealStatus");
  status->setMinimumWidth(kModeWidth);
  mode->addWidget(status);
  row->addLayout(mode);
  // Centred beside the choice, without stretching the frame in height.
  row->setAlignment(mode, Qt::AlignVCenter);
  row->addStretch();

  // A speck at the frame's corner, where its twips put it.
  QLabel* speck = make.MakeLabel(panel.Label4, "Label4");
  speck->setParent(frame);
  make.Place(*speck, panel.Label4);
  return frame;
}

QGroupBox* MakeHostDigestFrame(AuthMorlin& panel, WidgetFactory& make) {
  QGroupBox* frame = make.MakeFrame(panel.frmSha1Calc, "frmSha1Calc");
  auto* column = new QVBoxLayout(frame);
  column->addLayout(Captioned(
      make.MakeLabel(panel.lblauthhostNumber, "lblauthhostNumber"),
      make.MakeHexBox(panel.txtRndNumberandKey, "txtRndNumberandKey", kKeyAndChallengeDigits)));
  column->addLayout(
      Captioned(make.MakeLabel(panel.Label3, "Label3"),
                make.MakeHexBox(panel.txtSHA1Result, "txtSHA1Result", kDigestDigits)));
  return frame;
}

}  // namespace

TextBoxHandlers KeyBoxHandlers(AuthMorlin& panel, void (AuthMorlin::*change)(),
                               void (AuthMorlin::*validate)(bool& Cancel)) {
  return {.change = [&panel, change] { (panel.*change)(); },
          .validate = [&panel, validate](bool& cancel) { (panel.*validate)(cancel); }};
}

QWidget* MakeModePage(AuthMorlin& panel, WidgetFactory& make) {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->addWidget(MakeSealFrame(panel, make));
  column->addWidget(MakeUnsealFrame(panel, make));
  column->addStretch();
  return page;
}

QWidget* MakeAuthenticationPage(AuthMorlin& panel, WidgetFactory& make) {
  auto* page = new QWidget;
  auto* outer = new QVBoxLayout(page);
  QGroupBox* frame = make.MakeFrame(panel.frmAuth, "frmAuth");
  outer->addWidget(frame);
  outer->addStretch();

  auto* column = new QVBoxLayout(frame);
  column->addWidget(make.MakeLabel(panel.lblDeviceAuthentication, "lblDeviceAuthentication"));
  column->addWidget(make.MakeLabel(panel.Label1, "Label1"));
  column->addLayout(Captioned(make.MakeLabel(panel.lblAuthKey, "lblAuthKey"),
                              make.MakeHexBox(panel.txtAuthKey, "txtAuthKey", kKeyDigits,
                                              KeyBoxHandlers(panel, &AuthMorlin::txtAuthKey_Change,
                                                             &AuthMorlin::txtAuthKey_Validate))));
  column->addLayout(
      Captioned(make.MakeLabel(panel.lblRandomNumber, "lblRandomNumber"),
                make.MakeHexBox(panel.txtAuthRandomNumber, "txtAuthRandomNumber", kDigestDigits)));
  column->addLayout(
      Captioned(make.MakeLabel(panel.lblDeviceDigest, "lblDeviceDigest"),
                make.MakeHexBox(panel.txtPartDigest, "txtPartDigest", kDigestDigits)));
  column->addWidget(MakeHostDigestFrame(panel, make));

  auto* row = new QHBoxLayout;
  row->addWidget(make.MakeButton(panel.btnAuthenticate, "btnAuthenticate",
                                 [&panel] { panel.btnAuthenticate_Click(); }));
  row->addWidget(make.MakeLabel(panel.lblAuthenticationStatus, "lblAuthenticationStatus"), 1);
  column->addLayout(row);
  return page;
}

}  // namespace ombrelay
