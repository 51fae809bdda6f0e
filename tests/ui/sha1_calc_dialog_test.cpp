#include "ui/sha1_calc_dialog.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace ombrelay {
namespace {

TEST(Sha1CalcDialogTest, ButtonsComputeFromWhatIsTypedAndQuitCloses) {
  Sha1CalcDialog dialog;
  dialog.show();
  EXPECT_EQ(dialog.windowTitle(), "SHA1/HMAC");
  EXPECT_EQ(dialog.findChild<QLabel*>("Label3")->text(), "DIGEST STRING");
  auto* digest = dialog.findChild<QLineEdit*>("txtDigest");
  EXPECT_TRUE(digest->isReadOnly());
  EXPECT_EQ(digest->palette().color(QPalette::Base), QColor(0xFF, 0xFF, 0x80));

  QTest::keyClicks(dialog.findChild<QLineEdit*>("txtKey"), "000102030405060708090A0B0C0D0E0F");
  QTest::keyClicks(dialog.findChild<QLineEdit*>("txtMsg"),
                   "101112131415161718191A1B1C1D1E1F20212223");
  const auto press = [&](const char* button) {
    dialog.findChild<QPushButton*>(button)->click();
    return digest->text();
  };
  // Worked out apart from the panel: SHA-1 of the message, of key and message, and of the key
  // with the latter.
  EXPECT_EQ(press("cmdSHA1Msg"), "3330CE20D53B4219584B4DA845C8D141E9AB4DBF");
  EXPECT_EQ(press("cmdSHA1KeyMsg"), "75DB4F6BCC05A781DDA9D17C46717286DD53654B");
  EXPECT_EQ(press("cmdTarvexHMAC"), "C7EFDFFC9081C9F7F27281F1D32DDDDEEF4312F6");

  press("cmdQuit");
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_FALSE(dialog.Form().Visible);
}

}  // namespace
}  // namespace ombrelay
