#include "ui/control_bindings.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFontInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTest>
#include <QVBoxLayout>
#include <map>
#include <sstream>

#include "shell/controls.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "ui/qt_platform.h"

namespace ombrelay {
namespace {

class ControlBindingsTest : public ::testing::Test {
 protected:
  ControlBindingsTest() {
    platform.SetUnattended(true);
    g_oPlatform = &platform;
    auto* layout = new QVBoxLayout(&window);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{&label, &frame, &picture, &button, &check, &edit, &area,
                                         &tabs, &table, &options[0], &options[1]})
      layout->addWidget(widget);
  }
  ~ControlBindingsTest() override { ResetSharedState(); }

  std::ostringstream log;
  QtPlatform platform{log};

  Label labelControl;
  Frame frameControl;
  Picture pictureControl;
  Button buttonControl;
  CheckBox checkControl;
  TextBox textControl;
  TabStrip tabControl;
  Grid gridControl;
  std::array<OptionButton, 2> optionControls;
  TextBox areaControl;

  // The widgets outlive the bindings, as in a panel.
  QWidget window;
  QLabel label{&window};
  QGroupBox frame{&window};
  QWidget picture{&window};
  QPushButton button{&window};
  QCheckBox check{&window};
  QLineEdit edit{&window};
  QPlainTextEdit area{&window};
  QTabBar tabs{&window};
  QTableWidget table{&window};
  std::array<QRadioButton, 2> options{{QRadioButton{&window}, QRadioButton{&window}}};
  ControlBindings bindings;
};

TEST_F(ControlBindingsTest, RefreshShowsWhatTheControlsHoldSelectionIncluded) {
  labelControl.Caption = "Voltage: Enter.\r\n\r\nTemperature:";
  frameControl.Caption = "Pack Calibration";
  pictureControl.Visible = false;
  buttonControl.Caption = "Calibrate &Board Offset";
  buttonControl.Enabled = false;
  buttonControl.ToolTipText = "Go to first page. ";
  checkControl.Caption = "Ext 1 Temp";
  checkControl.Value = 1;
  textControl.Text = "12000";
  textControl.Locked = true;
  textControl.MaxLength = 5;
  textControl.ForeColor = 0xFF0000;
  areaControl.Text = "0123456789ABCDEF0123";
  tabControl.TabCaptions = {"Voltage and Temperature", "Current"};
  tabControl.Tab = 1;
  bindings.Bind(label, labelControl);
  bindings.Bind(frame, frameControl);
  bindings.Bind(picture, pictureControl);
  bindings.Bind(button, buttonControl);
  bindings.Bind(check, checkControl);
  bindings.Bind(edit, textControl);
  bindings.Bind(area, areaControl);
  bindings.Bind(tabs, tabControl);
  window.show();
  bindings.Refresh();

  EXPECT_EQ(area.toPlainText(), "0123456789ABCDEF0123");
  EXPECT_EQ(label.text(), "Voltage: Enter.\n\nTemperature:");
  EXPECT_EQ(frame.title(), "Pack Calibration");
  EXPECT_TRUE(picture.isHidden());
  EXPECT_EQ(button.text(), "Calibrate &Board Offset");
  EXPECT_FALSE(button.isEnabled());
  EXPECT_EQ(button.toolTip(), "Go to first page. ");
  EXPECT_EQ(check.text(), "Ext 1 Temp");
  EXPECT_TRUE(check.isChecked());
  EXPECT_EQ(edit.text(), "12000");
  EXPECT_TRUE(edit.isReadOnly());
  EXPECT_EQ(edit.maxLength(), 5);
  EXPECT_EQ(edit.palette().color(QPalette::Text), QColor(0xFF, 0, 0));
  ASSERT_EQ(tabs.count(), 2);
  EXPECT_EQ(tabs.tabText(1), "Current");
  EXPECT_EQ(tabs.currentIndex(), 1);

  // And back again: the widgets follow every later change.
  pictureControl.Visible = true;
  buttonControl.Enabled = true;
  textControl.Text = "Err_Rd";  // longer than MaxLength, which holds back typing only
  bindings.Refresh();
  EXPECT_FALSE(picture.isHidden());
  EXPECT_TRUE(button.isEnabled());
  EXPECT_EQ(edit.text(), "Err_Rd");

  textControl.MaxLength = 0;
  bindings.Refresh();
  EXPECT_EQ(edit.maxLength(), 32767);

  // The selection goes both ways.
  textControl.SelStart = 1;
  textControl.SelLength = 3;
  bindings.Refresh();
  EXPECT_EQ(edit.selectedText(), "rr_");
  edit.setCursorPosition(4);
  EXPECT_EQ(textControl.SelStart, 4);
  EXPECT_EQ(textControl.SelLength, 0);
}

TEST_F(ControlBindingsTest, UserActionsReachTheControlBeforeItsHandler) {
  int clicks = 0;
  std::vector<int> checkValuesSeen;
  std::vector<std::string> textsSeen;
  std::vector<std::int16_t> tabsLeft;
  tabControl.TabCaptions = {"Voltage and Temperature", "Current"};
  // A handler's changes show as soon as it has run.
  bindings.Bind(button, buttonControl, [&] {
    ++clicks;
    labelControl.Caption = "clicked";
  });
  bindings.Bind(label, labelControl);
  bindings.Bind(check, checkControl, [&] { checkValuesSeen.push_back(checkControl.Value); });
  bindings.Bind(edit, textControl, {.change = [&] { textsSeen.push_back(textControl.Text); }});
  bindings.Bind(area, areaControl);
  bindings.Bind(tabs, tabControl,
                [&](std::int16_t previousTab) { tabsLeft.push_back(previousTab); });
  window.show();
  bindings.Refresh();

  button.click();
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(label.text(), "clicked");

  check.click();
  check.click();
  EXPECT_EQ(checkValuesSeen, (std::vector<int>{1, 0}));

  QTest::keyClicks(&edit, "42");
  EXPECT_EQ(textsSeen, (std::vector<std::string>{"4", "42"}));
  EXPECT_EQ(textControl.SelStart, 2);
  QTest::keyClicks(&area, "7E");
  EXPECT_EQ(areaControl.Text, "7E");

  tabs.setCurrentIndex(1);
  EXPECT_EQ(tabControl.Tab, 1);
  EXPECT_EQ(tabsLeft, (std::vector<std::int16_t>{0}));

  // What the program sets is never taken for the user's doing.
  checkControl.Value = 1;
  textControl.Text = "4000";
  tabControl.Tab = 0;
  bindings.Refresh();
  EXPECT_TRUE(check.isChecked());
  EXPECT_EQ(tabs.currentIndex(), 0);
  EXPECT_EQ(checkValuesSeen.size(), 2U);
  EXPECT_EQ(textsSeen.size(), 2U);
  EXPECT_EQ(tabsLeft.size(), 1U);
}

TEST_F(ControlBindingsTest, FontsColoursPlaceAndAlignmentComeFromTheControls) {
  labelControl.FontName = "Courier";
  labelControl.FontSize = 9.75F;
  labelControl.FontBold = true;
  labelControl.ForeColor = 0xFF0000;
  labelControl.BackColor = 0xC0C0FF;
  labelControl.Alignment = TextAlignment::Right;
  label.setAlignment(Qt::AlignBottom);
  QFont large = button.font();
  large.setPointSize(15);
  button.setFont(large);
  Line lineControl;
  lineControl.X1 = 360;
  lineControl.X2 = 11160;
  lineControl.Y1 = lineControl.Y2 = 1560;
  QFrame line(&window);
  bindings.Bind(label, labelControl);
  bindings.Bind(button, buttonControl);
  bindings.Bind(line, lineControl);
  bindings.Refresh();

  EXPECT_TRUE(QFontInfo(label.font()).fixedPitch()) << "Courier or a fixed-pitch stand-in";
  EXPECT_EQ(label.font().pointSizeF(), 9.75);
  EXPECT_TRUE(label.font().bold());
  EXPECT_EQ(label.palette().color(QPalette::Active, QPalette::WindowText), QColor(0xFF, 0, 0));
  EXPECT_NE(label.palette().color(QPalette::Disabled, QPalette::WindowText), QColor(0xFF, 0, 0))
      << "a disabled control keeps the view's grey";
  EXPECT_EQ(label.palette().color(QPalette::Window), QColor(0xC0, 0xC0, 0xFF));
  EXPECT_TRUE(label.autoFillBackground());
  EXPECT_EQ(label.alignment(), Qt::AlignRight | Qt::AlignBottom);
  EXPECT_EQ(button.font().pointSize(), 15) << "no font in the control: the view's own";
  EXPECT_FALSE(button.autoFillBackground()) << "no BackColor: the view's own";
  EXPECT_EQ(line.geometry(), QRect(24, 104, 720, 1));
}

TEST_F(ControlBindingsTest, OptionButtonsFollowTheirControlsBothWays) {
  std::vector<int> clicked;
  for (int i = 0; i < 2; ++i) {
    bindings.Bind(options[i], optionControls[i], [&, i] {
      clicked.push_back(i);
      optionControls[1 - i].Value = false;
    });
  }
  optionControls[0].Value = true;
  bindings.Refresh();
  ASSERT_TRUE(options[0].isChecked());

  options[1].click();
  EXPECT_EQ(clicked, std::vector<int>{1});
  EXPECT_TRUE(optionControls[1].Value);
  EXPECT_FALSE(optionControls[0].Value);
  EXPECT_FALSE(options[0].isChecked());

  // The program may turn the whole group off, which the widgets alone would not allow.
  optionControls[1].Value = false;
  bindings.Refresh();
  EXPECT_FALSE(options[0].isChecked() || options[1].isChecked());
  EXPECT_TRUE(options[1].autoExclusive());
  EXPECT_EQ(clicked.size(), 1U);
}

TEST_F(ControlBindingsTest, RunTimeErrorInHandlerBecomesErrorBox) {
  bindings.Bind(button, buttonControl, [] { throw RuntimeError(kTypeMismatch); });
  bindings.Bind(label, labelControl);
  labelControl.Caption = "after";
  button.click();
  EXPECT_EQ(log.str(), "message: error: Run-time error: Type mismatch\n");
  EXPECT_EQ(label.text(), "after") << "the view still catches up";
}

TEST_F(ControlBindingsTest, GridShowsCellsRowsAndColumnsFromTwips) {
  gridControl.SetCols(2);
  gridControl.SetRows(2);
  gridControl.FixedRows = 1;
  gridControl.FixedCols = 1;
  gridControl.SetRowHeight(0, 255);
  gridControl.SetRowHeight(1, 255);
  gridControl.SetColWidth(0, 1680);
  gridControl.SetColWidth(1, 1120);
  gridControl.Cell(0, 0) = {"Parameter", CellAlignment::Centre, true, 9};
  gridControl.Cell(1, 0) = {"Cell Gain", CellAlignment::Left, false, 0};
  gridControl.Cell(1, 1) = {"12101", CellAlignment::Centre, false, 0};
  bindings.Bind(table, gridControl);
  bindings.Refresh();

  ASSERT_EQ(table.rowCount(), 2);
  ASSERT_EQ(table.columnCount(), 2);
  EXPECT_EQ(table.rowHeight(1), 17);
  EXPECT_EQ(table.columnWidth(0), 112);
  EXPECT_EQ(table.columnWidth(1), 75);
  EXPECT_EQ(table.item(0, 0)->text(), "Parameter");
  EXPECT_TRUE(table.item(0, 0)->font().bold());
  EXPECT_EQ(table.item(0, 0)->font().pointSize(), 9);
  EXPECT_FALSE(table.item(1, 0)->font().bold());
  EXPECT_EQ(table.item(1, 1)->textAlignment(), static_cast<int>(Qt::AlignCenter));
  EXPECT_EQ(table.item(1, 0)->textAlignment(), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter));
  EXPECT_FALSE(table.item(1, 1)->flags() & Qt::ItemIsEditable);

  gridControl.SetRows(4);
  gridControl.Cell(3, 1).Text = "-";
  bindings.Refresh();
  EXPECT_EQ(table.rowCount(), 4);
  EXPECT_EQ(table.item(3, 1)->text(), "-");
}

// Keeps the elide mode each grid cell is drawn with, by its text.
class ElideRecordingStyle : public QProxyStyle {
 public:
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    if (element == CE_ItemViewItem) {
      const auto* item = static_cast<const QStyleOptionViewItem*>(option);
      elideModes[item->text] = item->textElideMode;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
  }
  mutable std::map<QString, Qt::TextElideMode> elideModes;
};

TEST_F(ControlBindingsTest, GridValuesAreDrawnWholeAndNamesElided) {
  gridControl.SetCols(2);
  gridControl.SetRows(2);
  gridControl.FixedRows = 1;
  gridControl.FixedCols = 1;
  gridControl.Cell(0, 1).Text = "Value";
  gridControl.Cell(1, 0).Text = "Coulomb Counter Delta";
  gridControl.Cell(1, 1).Text = "268750.625";
  auto* style = new ElideRecordingStyle;
  style->setParent(&table);
  table.setStyle(style);
  bindings.Bind(table, gridControl);
  bindings.Refresh();
  window.show();
  table.grab();

  EXPECT_EQ(style->elideModes["268750.625"], Qt::ElideNone);
  EXPECT_EQ(style->elideModes["Coulomb Counter Delta"], table.textElideMode());
  EXPECT_EQ(style->elideModes["Value"], table.textElideMode());
}

TEST_F(ControlBindingsTest, CancelledValidateKeepsTheFocus) {
  int validations = 0;
  bool cancel = true;
  bindings.Bind(edit, textControl, {.validate = [&](bool& Cancel) {
                  ++validations;
                  Cancel = cancel;
                }});
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  edit.setFocus();
  QTest::qWait(10);

  button.setFocus();
  QTest::qWait(10);
  EXPECT_EQ(validations, 1);
  EXPECT_TRUE(edit.hasFocus());

  cancel = false;
  button.setFocus();
  QTest::qWait(10);
  EXPECT_EQ(validations, 2);
  EXPECT_TRUE(button.hasFocus());
}

}  // namespace
}  // namespace ombrelay
