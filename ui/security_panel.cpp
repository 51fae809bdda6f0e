#include "ui/security_panel.h"

#include <QLabel>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "ui/security_pages.h"
#include "ui/widget_factory.h"

namespace ombrelay {

SecurityPanel::SecurityPanel(Host& host, Platform& platform, QWidget* parent)
    : PanelWidget(parent), auth_(host, platform) {
  QPalette background = palette();
  background.setColor(QPalette::Window,
                      QColor::fromRgb(static_cast<QRgb>(SecurityControls::kBackColor)));
  setPalette(background);
  setAutoFillBackground(true);

  auto* tabs = new QTabBar;
  tabs->setObjectName("ssTabAuth");
  tabs->setExpanding(false);
  bindings_.Bind(*tabs, auth_.ssTabAuth,
                 [this](std::int16_t previousTab) { auth_.ssTabAuth_Click(previousTab); });
  auto* pages = new QStackedWidget;
  WidgetFactory make(bindings_);
  for (QWidget* page : {MakeModePage(auth_, make), MakeAuthenticationPage(auth_, make),
                        MakeKeyChangePage(auth_, make)})
    pages->addWidget(page);
  connect(tabs, &QTabBar::currentChanged, pages, &QStackedWidget::setCurrentIndex);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(tabs);
  column->addWidget(pages, 1);

  // Out of sight, where the host reads the panel's size from.
  QLabel* marker = make.MakeLabel(auth_.lblHWMarker, "lblHWMarker");
  marker->setParent(this);
  make.Place(*marker, auth_.lblHWMarker);
  Refresh();
}

QSize SecurityPanel::sizeHint() const {
  return QWidget::sizeHint().expandedTo(QSize(TwipsToPixels(SecurityControls::kClientWidth),
                                              TwipsToPixels(SecurityControls::kClientHeight)));
}

}  // namespace ombrelay
