#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <algorithm>
#include <vector>

#include "ui/security_pages.h"
#include "ui/widget_factory.h"

namespace ombrelay {
namespace {

// A band's digests wrap onto two lines, so that a band fits between its rules.
constexpr int kDigestLines = 2;
constexpr int kBandSpacing = 2;
constexpr int kHeadingGap = 8;

template <typename Control>
struct NamedControl {
  Control& control;
  const char* name;
};

// One key's band: the new key with its button, then the challenge, the host's digest and the
// gauge's answer, each under its heading.
struct Band {
  NamedControl<Label> keyHeading;
  NamedControl<TextBox> key;
  void (AuthMorlin::*change)();
  void (AuthMorlin::*validate)(bool& Cancel);
  NamedControl<Button> button;
  void (AuthMorlin::*click)();
  std::array<NamedControl<Label>, 3> headings;
  std::array<NamedControl<TextBox>, 3> digests;
};

// Its children stand where the twips put them; the page asks for room for all of them, with as
// much margin on the right and below as on the left.
class KeyChangePage : public QWidget {
 public:
  void AddBand(QGridLayout& band) { bands_.push_back(&band); }

  QSize minimumSizeHint() const override {
    QRect used;
    for (const QWidget* child : findChildren<const QWidget*>(Qt::FindDirectChildrenOnly))
      used |= QRect(child->pos(), child->sizeHint().expandedTo(child->size()));
    return {used.right() + 1 + used.left(), used.bottom() + 1 + used.left()};
  }
  QSize sizeHint() const override { return minimumSizeHint(); }

 protected:
  void showEvent(QShowEvent* event) override {
    // The bands' columns line up: the key column of each is as wide as the widest, which the
    // fonts of the headings and buttons decide.
    int width = 0;
    for (QGridLayout* band : bands_) {
      for (const int row : {0, 1})
        width = std::max(width, band->itemAtPosition(row, 0)->sizeHint().width());
    }
    for (QGridLayout* band : bands_)
      band->setColumnMinimumWidth(0, width);
    updateGeometry();
    QWidget::showEvent(event);
  }

 private:
  std::vector<QGridLayout*> bands_;
};

QLabel* MakeHeading(WidgetFactory& make, const NamedControl<Label>& heading) {
  QLabel* label = make.MakeLabel(heading.control, heading.name);
  label->setAlignment(Qt::AlignBottom);
  return label;
}

// The band at its button's top, from the rules' left edge.
void MakeBand(AuthMorlin& panel, WidgetFactory& make, const Band& band, KeyChangePage& page,
              int left) {
  auto* widget = new QWidget(&page);
  widget->move(TwipsToPixels(left), TwipsToPixels(band.button.control.Top));
  auto* grid = new QGridLayout(widget);
  grid->setSizeConstraint(QLayout::SetFixedSize);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(kBandSpacing);

  auto* keyRow = new QHBoxLayout;
  keyRow->setSpacing(kHeadingGap);
  keyRow->addWidget(MakeHeading(make, band.keyHeading));
  keyRow->addStretch();
  keyRow->addWidget(make.MakeButton(band.button.control, band.button.name,
                                    [&panel, click = band.click] { (panel.*click)(); }));
  grid->addLayout(keyRow, 0, 0);
  grid->addWidget(make.MakeHexBox(band.key.control, band.key.name, kKeyDigits,
                                  KeyBoxHandlers(panel, band.change, band.validate)),
                  1, 0, Qt::AlignTop);
  for (std::size_t i = 0; i < band.digests.size(); ++i) {
    const int column = static_cast<int>(i) + 1;
    grid->addWidget(MakeHeading(make, band.headings[i]), 0, column);
    grid->addWidget(make.MakeHexArea(band.digests[i].control, band.digests[i].name,
                                     kDigestDigits / kDigestLines, kDigestLines),
                    1, column);
  }
  page.AddBand(*grid);
}

}  // namespace

QWidget* MakeKeyChangePage(AuthMorlin& panel, WidgetFactory& make) {
  auto* page = new KeyChangePage;
  const std::array<NamedControl<Line>, 6> rules = {{{panel.Line1, "Line1"},
                                                    {panel.Line2, "Line2"},
                                                    {panel.Line3, "Line3"},
                                                    {panel.Line4, "Line4"},
                                                    {panel.Line5, "Line5"},
                                                    {panel.Line6, "Line6"}}};
  int firstRule = rules[0].control.Y1;
  for (const auto& rule : rules) {
    make.MakeLine(rule.control, rule.name, *page);
    firstRule = std::min(firstRule, rule.control.Y1);
  }
  const Line& edges = panel.Line1;

  // The status stands above the first rule, across the bands' width.
  QLabel* status = make.MakeLabel(panel.lblUnsealkeyStatus, "lblUnsealkeyStatus");
  status->setParent(page);
  status->setGeometry(TwipsToPixels(edges.X1), 0, TwipsToPixels(edges.X2 - edges.X1),
                      TwipsToPixels(firstRule));

  const std::array<Band, 3> bands = {{
      {{panel.Label2, "Label2"},
       {panel.txtUnsealKeyNew, "txtUnsealKeyNew"},
       &AuthMorlin::txtUnsealKeyNew_Change,
       &AuthMorlin::txtUnsealKeyNew_Validate,
       {panel.Change_Unseal_Key, "Change_Unseal_Key"},
       &AuthMorlin::Change_Unseal_Key_Click,
       {{{panel.Label5, "Label5"}, {panel.Label6, "Label6"}, {panel.Label7, "Label7"}}},
       {{{panel.txtChallengeReturnUnseal, "txtChallengeReturnUnseal"},
         {panel.txtUnsealRandomNumandKey, "txtUnsealRandomNumandKey"},
         {panel.txtNewUnsealKeyResponseDev, "txtNewUnsealKeyResponseDev"}}}},
      {{panel.Label8, "Label8"},
       {panel.txtFullAcclKeyNew, "txtFullAcclKeyNew"},
       &AuthMorlin::txtFullAcclKeyNew_Change,
       &AuthMorlin::txtFullAcclKeyNew_Validate,
       {panel.Change_FullAccl_Key, "Change_FullAccl_Key"},
       &AuthMorlin::Change_FullAccl_Key_Click,
       {{{panel.Label9, "Label9"}, {panel.Label10, "Label10"}, {panel.Label11, "Label11"}}},
       {{{panel.txtChallengeReturnFullAcc, "txtChallengeReturnFullAcc"},
         {panel.txtFullAcclRandomNumandKey, "txtFullAcclRandomNumandKey"},
         {panel.txtNewFullAccKeyResponseDev, "txtNewFullAccKeyResponseDev"}}}},
      {{panel.Label12, "Label12"},
       {panel.txtAuthlKeyNew, "txtAuthlKeyNew"},
       &AuthMorlin::txtAuthlKeyNew_Change,
       &AuthMorlin::txtAuthlKeyNew_Validate,
       {panel.Change_Auth_Key, "Change_Auth_Key"},
       &AuthMorlin::Change_Auth_Key_Click,
       {{{panel.Label13, "Label13"}, {panel.Label14, "Label14"}, {panel.Label15, "Label15"}}},
       {{{panel.txtChallengeReturnAuth, "txtChallengeReturnAuth"},
         {panel.txtAuthRandomNumandKey, "txtAuthRandomNumandKey"},
         {panel.txtNewAuthKeyResponseDev, "txtNewAuthKeyResponseDev"}}}},
  }};
  for (const Band& band : bands)
    MakeBand(panel, make, band, *page, edges.X1);
  return page;
}

}  // namespace ombrelay
