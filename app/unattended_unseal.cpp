#include "app/unattended_unseal.h"

#include <QAbstractButton>
#include <QLabel>
#include <QWidget>

namespace ombrelay {

bool UnsealAsAnEngineerWould(QWidget& panel) {
  auto* unseal = panel.findChild<QAbstractButton*>("optionAction(1)");
  auto* go = panel.findChild<QAbstractButton*>("btnGo");
  const auto* mode = panel.findChild<QLabel*>("lblSealStatus");
  if (unseal == nullptr || go == nullptr || mode == nullptr || !go->isEnabled()) return false;
  unseal->click();
  go->click();
  return mode->text() == "Unsealed";
}

}  // namespace ombrelay
