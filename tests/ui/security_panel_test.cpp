#include "ui/security_panel.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <functional>
#include <sstream>

#include "hosts/recording_host.h"
#include "hosts/sim_host.h"
#include "shell/shared_state.h"
#include "sim/clock.h"
#include "sim/sample_gauges.h"
#include "ui/binding.h"
#include "ui/qt_platform.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kAuthenticationCommand = 0x2F;
constexpr std::uint16_t kOperationStatusWord = 0x0054;
constexpr std::uint16_t kUnsealWord = 0x0031;

// The panel in a window beside a box of its own, a simulated MORLIN on the bus.
class SecurityPanelTest : public ::testing::Test {
 protected:
  SecurityPanelTest() {
    g_sPluginFolder = OMBRELAY_SOURCE_APPDIR "/plugins";
    g_oPlatform = &platform;
    platform.SetUnattended(true);
    platform.SetRefreshHook([this] { panel->Refresh(); });
    host.Attach(gauge.get());
    auto* row = new QHBoxLayout(&window);
    row->addWidget(panel);
    row->addWidget(outside);
  }
  ~SecurityPanelTest() override { ResetSharedState(); }

  template <typename Widget = QWidget>
  Widget& Find(const QString& name) {
    auto* widget = panel->findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name.toStdString();
    return *widget;
  }

  void ShowAndStart() {
    QSignalSpy finished(panel, &SecurityPanel::startupFinished);
    window.show();
    ASSERT_TRUE(finished.wait(10000));
  }

  // Operations since the record was last cleared that match.
  long Count(const std::function<bool(const BusOperation&)>& match) const {
    return std::ranges::count_if(bus.Operations(), match);
  }
  long ManufacturerAccessWrites(std::uint16_t word) const {
    return Count([word](const BusOperation& op) {
      return op.op == "WriteSMBusWord_" && op.cmd == 0 && op.word == word;
    });
  }

  sim::RealClock clock;
  std::unique_ptr<sim::Gauge> gauge = sim::MakeSampleGauge(sim::Family::Morlin, clock);
  SimHost host{clock};
  RecordingHost bus{host, [this] { return clock.NowMs(); }};
  std::ostringstream log;
  QtPlatform platform{log};
  QWidget window;
  SecurityPanel* panel = new SecurityPanel(bus, platform);
  QLineEdit* outside = new QLineEdit;
};

QString Shown(const QWidget& widget) {
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text();
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
  if (const auto* frame = qobject_cast<const QGroupBox*>(&widget)) return frame->title();
  return "(not a captioned widget)";
}

TEST_F(SecurityPanelTest, EveryControlHasItsNamedWidgetCaptionFontAndPlace) {
  const std::vector<std::pair<const char*, const char*>> captions = {
      {"lblHWMarker", "Hardware Marker"},
      {"frmSeal", ""},
      {"lblSealMain", "Seal/Unseal/Full Access"},
      {"lbldataformat", "All displayed data is most significant digit first."},
      {"lblUnSealKey", "Key (128 bits)"},
      {"lblSealRandomNumber", "Random Number from device"},
      {"lblSealRandomNumberKey", "Random Number + Key"},
      {"lblSealDigest", "Digest"},
      {"frmUnseal", ""},
      {"txtUnsealChange", "Select mode"},
      {"optionAction(0)", "Seal"},
      {"optionAction(1)", "Unseal"},
      {"optionAction(2)", "Full Access"},
      {"btnGo", "Go"},
      {"lblSealDeviceState", "Current Device Mode"},
      {"Label4", "Label4"},
      {"frmAuth", ""},
      {"lblDeviceAuthentication", "Device Authentication"},
      {"Label1", "All displayed data is most significant digit first."},
      {"lblAuthKey", "Key  (128 bits)"},
      {"lblRandomNumber", "Random Number sent to device"},
      {"lblDeviceDigest", "Device Digest"},
      {"frmSha1Calc", "Host SHA1 Calculation"},
      {"lblauthhostNumber", "Random Number + Key"},
      {"Label3", "Host SHA1 Digest"},
      {"btnAuthenticate", "Authenticate"},
      {"lblAuthenticationStatus", "Progress"},
      {"Label2", "New Unseal Key"},
      {"Label8", "New Full Access Key"},
      {"Label12", "New Auth Key "},
      {"Change_Unseal_Key", "Change Unseal key"},
      {"Change_FullAccl_Key", "Change Full Access Key"},
      {"Change_Auth_Key", "Change Authentication Key"},
  };
  for (const auto& [name, caption] : captions)
    EXPECT_EQ(Shown(Find(name)), caption) << name;
  for (const char* name : {"Label5", "Label9", "Label13"})
    EXPECT_EQ(Shown(Find(name)), "Challenge from Device") << name;
  for (const char* name : {"Label6", "Label10", "Label14"})
    EXPECT_EQ(Shown(Find(name)), "Hash : New Key + Challenge") << name;
  for (const char* name : {"Label7", "Label11", "Label15"})
    EXPECT_EQ(Shown(Find(name)), "New Unseal Key Hash :  Device") << name;
  for (const char* name :
       {"txtUnsealKey", "txtSealRandomfromDevice", "txtSealRandomNumberandKey", "txtDigest",
        "txtAuthKey", "txtAuthRandomNumber", "txtPartDigest", "txtRndNumberandKey", "txtSHA1Result",
        "txtUnsealKeyNew", "txtFullAcclKeyNew", "txtAuthlKeyNew"})
    EXPECT_TRUE(QFontInfo(Find<QLineEdit>(name).font()).fixedPitch()) << name;
  for (const char* name :
       {"txtChallengeReturnUnseal", "txtUnsealRandomNumandKey", "txtNewUnsealKeyResponseDev",
        "txtChallengeReturnFullAcc", "txtFullAcclRandomNumandKey", "txtNewFullAccKeyResponseDev",
        "txtChallengeReturnAuth", "txtAuthRandomNumandKey", "txtNewAuthKeyResponseDev"})
    EXPECT_TRUE(QFontInfo(Find<QPlainTextEdit>(name).font()).fixedPitch()) << name;
  EXPECT_TRUE(Find<QLineEdit>("txtDigest").isReadOnly());
  EXPECT_EQ(Find<QLineEdit>("txtUnsealKey").maxLength(), 32);

  const QLabel& status = Find<QLabel>("lblSealStatus");
  EXPECT_EQ(status.palette().color(QPalette::Window), QColor(0xC0, 0xC0, 0xFF));
  EXPECT_TRUE(status.autoFillBackground());
  EXPECT_TRUE(status.alignment() & Qt::AlignHCenter);
  EXPECT_TRUE(status.font().bold());
  EXPECT_EQ(status.font().pointSizeF(), 12.0);

  // The key change page: each band at its top, the rules at their twips.
  const QWidget& keyChangePage = *Find("Line1").parentWidget();
  for (const auto& [name, top] : std::vector<std::pair<const char*, int>>{
           {"Label2", 1920}, {"Change_FullAccl_Key", 3720}, {"Label15", 5520}})
    EXPECT_EQ(Find(name).mapTo(&keyChangePage, QPoint()).y(), TwipsToPixels(top)) << name;
  EXPECT_EQ(Find("Line2").geometry(), QRect(24, 104, 720, 1));
  EXPECT_EQ(Find("Line6").geometry(), QRect(24, 432, 720, 1));
  // Laid out on its shown page, each band ends above the rule under it.
  ShowAndStart();
  Find<QTabBar>("ssTabAuth").setCurrentIndex(2);
  QTest::qWait(10);
  for (const auto& [name, rule] : std::vector<std::pair<const char*, const char*>>{
           {"Label2", "Line1"}, {"Label8", "Line4"}, {"Label12", "Line6"}})
    EXPECT_LT(Find(name).parentWidget()->geometry().bottom(), Find(rule).y()) << name;
  const auto left = [&](const char* name) {
    return Find(name).mapTo(&keyChangePage, QPoint()).x();
  };
  EXPECT_EQ(left("txtChallengeReturnFullAcc"), left("txtChallengeReturnUnseal"));
  EXPECT_EQ(left("txtChallengeReturnAuth"), left("txtChallengeReturnUnseal"));
}

TEST_F(SecurityPanelTest, EachShowStartsOnTheFirstPageWithTheGaugesMode) {
  ShowAndStart();
  EXPECT_EQ(Find<QTabBar>("ssTabAuth").currentIndex(), 0);
  EXPECT_TRUE(Find("txtUnsealKey").isVisible());
  EXPECT_FALSE(Find("txtAuthKey").isVisible());
  EXPECT_EQ(Find<QLabel>("lblSealStatus").text(), "Unsealed");
  EXPECT_EQ(Find<QLineEdit>("txtAuthlKeyNew").text(), AuthMorlin::kDefaultKey);

  gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  QSignalSpy finished(panel, &SecurityPanel::startupFinished);
  panel->hide();
  panel->show();
  ASSERT_TRUE(finished.wait(10000));
  EXPECT_EQ(Find<QLabel>("lblSealStatus").text(), "Sealed");
}

TEST_F(SecurityPanelTest, LeavingTheAuthenticationTabReadsTheModeAndNoOtherDoes) {
  ShowAndStart();
  QTabBar& tabs = Find<QTabBar>("ssTabAuth");
  bus.Clear();
  tabs.setCurrentIndex(1);
  EXPECT_TRUE(Find("txtAuthKey").isVisible());
  EXPECT_EQ(ManufacturerAccessWrites(kOperationStatusWord), 0);

  tabs.setCurrentIndex(2);
  EXPECT_TRUE(Find("txtUnsealKeyNew").isVisible());
  EXPECT_EQ(ManufacturerAccessWrites(kOperationStatusWord), 1);

  bus.Clear();
  tabs.setCurrentIndex(0);
  EXPECT_TRUE(bus.Operations().empty());
}

TEST_F(SecurityPanelTest, ButtonsRunTheirHandlersAndTheModeChoiceStaysExclusive) {
  ShowAndStart();
  AuthMorlin& control = panel->Control();
  std::array<QRadioButton*, 3> options{};
  for (int i = 0; i < 3; ++i)
    options[i] = &Find<QRadioButton>(QStringLiteral("optionAction(%1)").arg(i));
  options[2]->click();
  options[0]->click();
  EXPECT_TRUE(options[0]->isChecked());
  EXPECT_FALSE(options[1]->isChecked() || options[2]->isChecked());
  EXPECT_TRUE(control.optionAction[0].Value);
  EXPECT_FALSE(control.optionAction[1].Value || control.optionAction[2].Value);

  // Unseal on an unsealed gauge: the handler refuses.
  options[1]->click();
  log.str({});
  Find<QAbstractButton>("btnGo").click();
  EXPECT_EQ(log.str(), "message: plain: Device is not sealed. Nothing to do.\n");

  // On a sealed one it asks for the challenge.
  gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  bus.Clear();
  Find<QAbstractButton>("btnGo").click();
  EXPECT_EQ(ManufacturerAccessWrites(kUnsealWord), 1);
  EXPECT_TRUE(Find("btnGo").isEnabled());

  // Authentication sends a challenge of its own, which the page shows.
  Find<QTabBar>("ssTabAuth").setCurrentIndex(1);
  bus.Clear();
  Find<QAbstractButton>("btnAuthenticate").click();
  EXPECT_EQ(Count([](const BusOperation& op) {
              return op.op == "WriteSMBusBlock" && op.cmd == kAuthenticationCommand && op.len == 20;
            }),
            2);
  EXPECT_EQ(Find<QLineEdit>("txtAuthRandomNumber").text().size(), 40);
  EXPECT_TRUE(Find("btnAuthenticate").isEnabled());
}

TEST_F(SecurityPanelTest, ABadKeyIsMarkedAsTypedAndKeepsTheFocus) {
  ShowAndStart();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QLineEdit& key = Find<QLineEdit>("txtUnsealKey");
  key.setFocus();
  key.selectAll();
  QTest::keyClicks(&key, "12G");
  EXPECT_EQ(key.selectedText(), "G");
  EXPECT_EQ(key.selectionStart(), 2);

  log.str({});
  outside->setFocus();
  QTest::qWait(10);
  EXPECT_EQ(log.str(), "message: plain: Length of Key needs to be 32 Hex characters long.\n");
  EXPECT_TRUE(key.hasFocus());

  // A whole key lets the focus go.
  key.selectAll();
  QTest::keyClicks(&key, AuthMorlin::kDefaultKey);
  outside->setFocus();
  QTest::qWait(10);
  EXPECT_TRUE(outside->hasFocus());
}

}  // namespace
}  // namespace ombrelay
