#pragma once
// The calculator as a Qt dialog: a view of SHA1Calc's form. Its buttons go to the form's
// handlers; when the form hides itself, the dialog closes.

#include <QDialog>

#include "security/sha1_calc.h"
#include "ui/control_bindings.h"

namespace ombrelay {

class Sha1CalcDialog : public QDialog {
  Q_OBJECT

 public:
  explicit Sha1CalcDialog(QWidget* parent = nullptr);

  // The form behind the view.
  SHA1Calc& Form() { return form_; }

 private:
  SHA1Calc form_;
  ControlBindings bindings_;
};

}  // namespace ombrelay
