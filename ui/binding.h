#pragma once
// One control bound to one widget. Refresh pushes the control's state into the widget and sets
// only what differs, so that refreshing many times a second neither moves a cursor nor floods
// the widget with change events. Binders of controls the user can change write the change into
// the control first and then run the control's handler through the panel's event runner.

#include <QObject>
#include <QString>
#include <functional>
#include <string>

class QWidget;

namespace ombrelay {

struct Control;

class Binding {
 public:
  Binding() = default;
  virtual ~Binding() = default;
  Binding(const Binding&) = delete;
  Binding& operator=(const Binding&) = delete;

  virtual void Refresh() = 0;

 protected:
  // The receiving end of the binder's connections, so that they end with the binder.
  QObject receiver_;
};

// A handler of the panel, such as btnCalibrate_Click; empty when the control has none.
using Handler = std::function<void()>;
// Runs a handler as an event of the panel and brings the view up to date afterwards.
using EventRunner = std::function<void(const Handler&)>;

// The properties every control shares: Enabled, Visible, ToolTipText, its colours and its font.
void SyncControl(QWidget& widget, const Control& control);

// A caption or text as a widget shows it; line breaks are CR LF in the controls.
QString DisplayText(const std::string& text);

// 15 twips to the pixel.
int TwipsToPixels(int twips);

}  // namespace ombrelay
