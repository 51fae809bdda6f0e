#include "ui/sha1_calc_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "ui/widget_factory.h"

namespace ombrelay {
namespace {

constexpr int kKeyDigits = 32;
constexpr int kMessageDigits = 40;

// The form's own caption and visibility: hiding the form closes its window.
class FormBinder : public Binding {
 public:
  FormBinder(QWidget& window, const SHA1Calc& form) : window_(window), form_(form) {}
  void Refresh() override {
    const QString caption = QString::fromStdString(form_.Caption);
    if (window_.windowTitle() != caption) window_.setWindowTitle(caption);
    if (!form_.Visible && window_.isVisible()) window_.close();
  }

 private:
  QWidget& window_;
  const SHA1Calc& form_;
};

}  // namespace

Sha1CalcDialog::Sha1CalcDialog(QWidget* parent) : QDialog(parent) {
  WidgetFactory make(bindings_);
  auto* grid = new QGridLayout(this);
  // Each box stands beside its heading, the unit under the heading.
  grid->addWidget(make.MakeLabel(form_.Label1, "Label1"), 0, 0);
  grid->addWidget(make.MakeHexBox(form_.txtKey, "txtKey", kKeyDigits), 0, 1, Qt::AlignLeft);
  grid->addWidget(make.MakeLabel(form_.Label4, "Label4"), 1, 0);
  grid->addWidget(make.MakeLabel(form_.Label2, "Label2"), 2, 0);
  grid->addWidget(make.MakeHexBox(form_.txtMsg, "txtMsg", kMessageDigits), 2, 1, Qt::AlignLeft);
  grid->addWidget(make.MakeLabel(form_.Label5, "Label5"), 3, 0);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(
      make.MakeButton(form_.cmdSHA1Msg, "cmdSHA1Msg", [this] { form_.cmdSHA1Msg_Click(); }));
  buttons->addWidget(make.MakeButton(form_.cmdSHA1KeyMsg, "cmdSHA1KeyMsg",
                                     [this] { form_.cmdSHA1KeyMsg_Click(); }));
  buttons->addWidget(make.MakeButton(form_.cmdTarvexHMAC, "cmdTarvexHMAC",
                                     [this] { form_.cmdTarvexHMAC_Click(); }));
  grid->addLayout(buttons, 4, 0, 1, 2);

  grid->addWidget(make.MakeLabel(form_.Label3, "Label3"), 5, 0);
  grid->addWidget(make.MakeHexBox(form_.txtDigest, "txtDigest", kMessageDigits), 5, 1,
                  Qt::AlignLeft);
  grid->addWidget(make.MakeButton(form_.cmdQuit, "cmdQuit", [this] { form_.cmdQuit_Click(); }), 6,
                  1, Qt::AlignRight);
  // The form has no default button: Enter in a box presses nothing.
  for (QPushButton* button : findChildren<QPushButton*>())
    button->setAutoDefault(false);

  bindings_.Add(std::make_unique<FormBinder>(*this, form_));
  bindings_.Refresh();
}

}  // namespace ombrelay
