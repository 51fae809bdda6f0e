#pragma once
// The security panel as a Qt widget: a view of AuthMorlin's controls. The tab strip is on top
// and switches the three pages, and every user action goes to AuthMorlin's handlers. Start-up
// runs each time the panel is shown.

#include "security/auth_morlin.h"
#include "ui/panel_widget.h"

namespace ombrelay {

class Host;
class Platform;

class SecurityPanel : public PanelWidget {
  Q_OBJECT

 public:
  SecurityPanel(Host& host, Platform& platform, QWidget* parent = nullptr);

  // At least the control's client area.
  QSize sizeHint() const override;
  // The control behind the view, for the host to reach its members.
  AuthMorlin& Control() { return auth_; }

 private:
  void Startup() override { auth_.UserControl_Show(); }

  AuthMorlin auth_;
};

}  // namespace ombrelay
