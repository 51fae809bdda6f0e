#include "ui/input_binders.h"

#include <QCheckBox>
#include <QEvent>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "shell/controls.h"

namespace ombrelay {
namespace {

// QLineEdit's own limit, which stands for "no limit".
constexpr int kNoMaxLength = 32767;

// Calls back when the watched widget loses the focus to another widget of its window; a switch
// to another window, a box or a menu is not a move between the panel's controls.
class FocusOutWatch : public QObject {
 public:
  explicit FocusOutWatch(std::function<void()> onFocusOut) : onFocusOut_(std::move(onFocusOut)) {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::FocusOut) {
      const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
      if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) onFocusOut_();
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  std::function<void()> onFocusOut_;
};

}  // namespace

ButtonBinder::ButtonBinder(QPushButton& widget, const Button& control, EventRunner run,
                           Handler click)
    : widget_(widget), control_(control) {
  QObject::connect(&widget_, &QPushButton::clicked, &receiver_,
                   [run = std::move(run), click = std::move(click)] { run(click); });
}

void ButtonBinder::Refresh() {
  SyncControl(widget_, control_);
  const QString caption = DisplayText(control_.Caption);
  if (widget_.text() != caption) widget_.setText(caption);
}

CheckBoxBinder::CheckBoxBinder(QCheckBox& widget, CheckBox& control, EventRunner run, Handler click)
    : widget_(widget), control_(control) {
  // clicked comes from the user only, never from Refresh's setChecked.
  QObject::connect(&widget_, &QCheckBox::clicked, &receiver_,
                   [this, run = std::move(run), click = std::move(click)](bool checked) {
                     control_.Value = checked ? 1 : 0;
                     run(click);
                   });
}

OptionButtonBinder::OptionButtonBinder(QRadioButton& widget, OptionButton& control, EventRunner run,
                                       Handler click)
    : widget_(widget), control_(control) {
  QObject::connect(&widget_, &QRadioButton::clicked, &receiver_,
                   [this, run = std::move(run), click = std::move(click)] {
                     control_.Value = true;
                     run(click);
                   });
}

void OptionButtonBinder::Refresh() {
  SyncControl(widget_, control_);
  const QString caption = DisplayText(control_.Caption);
  if (widget_.text() != caption) widget_.setText(caption);
  if (widget_.isChecked() == control_.Value) return;
  // Which button of a group is on is the controls' to say: an auto-exclusive button would not
  // let go of its check, and checking one here must not clear a sibling that is refreshed next.
  const bool exclusive = widget_.autoExclusive();
  widget_.setAutoExclusive(false);
  widget_.setChecked(control_.Value);
  widget_.setAutoExclusive(exclusive);
}

void CheckBoxBinder::Refresh() {
  SyncControl(widget_, control_);
  const QString caption = DisplayText(control_.Caption);
  if (widget_.text() != caption) widget_.setText(caption);
  const bool checked = control_.Value == 1;
  if (widget_.isChecked() != checked) widget_.setChecked(checked);
}

TextBoxBinder::TextBoxBinder(QLineEdit& widget, TextBox& control, EventRunner run,
                             TextBoxHandlers handlers)
    : widget_(widget), control_(control), run_(std::move(run)), handlers_(std::move(handlers)) {
  QObject::connect(&widget_, &QLineEdit::textEdited, &receiver_, [this](const QString& text) {
    control_.Text = text.toStdString();
    // The cursor has moved with the edit; the handler and the refresh after it must see it.
    PullSelection();
    run_(handlers_.change);
  });
  const auto pullUnlessPushing = [this] {
    if (!pushing_) PullSelection();
  };
  QObject::connect(&widget_, &QLineEdit::cursorPositionChanged, &receiver_, pullUnlessPushing);
  QObject::connect(&widget_, &QLineEdit::selectionChanged, &receiver_, pullUnlessPushing);
  if (handlers_.validate) {
    focusWatch_ = std::make_unique<FocusOutWatch>([this] { Validate(); });
    widget_.installEventFilter(focusWatch_.get());
  }
}

TextBoxBinder::~TextBoxBinder() = default;

void TextBoxBinder::Refresh() {
  pushing_ = true;
  SyncControl(widget_, control_);
  const QString text = QString::fromStdString(control_.Text);
  // MaxLength holds back the user only; a longer text from the panel shows whole, as the widget
  // would otherwise cut it.
  const int maxLength = control_.MaxLength > 0
                            ? std::max(control_.MaxLength, static_cast<int>(text.size()))
                            : kNoMaxLength;
  if (widget_.maxLength() != maxLength) widget_.setMaxLength(maxLength);
  if (widget_.text() != text) widget_.setText(text);
  if (widget_.isReadOnly() != control_.Locked) widget_.setReadOnly(control_.Locked);
  const int start = widget_.hasSelectedText() ? widget_.selectionStart() : widget_.cursorPosition();
  const int length = static_cast<int>(widget_.selectedText().size());
  if (start != control_.SelStart || length != control_.SelLength) {
    if (control_.SelLength > 0) {
      widget_.setSelection(control_.SelStart, control_.SelLength);
    } else {
      widget_.setCursorPosition(control_.SelStart);
    }
  }
  pushing_ = false;
}

void TextBoxBinder::PullSelection() {
  control_.SelStart =
      widget_.hasSelectedText() ? widget_.selectionStart() : widget_.cursorPosition();
  control_.SelLength = static_cast<int>(widget_.selectedText().size());
}

void TextBoxBinder::Validate() {
  bool cancel = false;
  run_([this, &cancel] { handlers_.validate(cancel); });
  if (cancel) {
    // Not from inside the focus change itself: Qt is still handing the focus over.
    QTimer::singleShot(0, &widget_, [widget = &widget_] { widget->setFocus(); });
  }
}

TextAreaBinder::TextAreaBinder(QPlainTextEdit& widget, TextBox& control)
    : widget_(widget), control_(control) {
  QObject::connect(&widget_, &QPlainTextEdit::textChanged, &receiver_, [this] {
    if (!pushing_) control_.Text = widget_.toPlainText().toStdString();
  });
}

void TextAreaBinder::Refresh() {
  pushing_ = true;
  SyncControl(widget_, control_);
  const QString text = QString::fromStdString(control_.Text);
  if (widget_.toPlainText() != text) widget_.setPlainText(text);
  if (widget_.isReadOnly() != control_.Locked) widget_.setReadOnly(control_.Locked);
  pushing_ = false;
}

TabStripBinder::TabStripBinder(QTabBar& widget, TabStrip& control, EventRunner run,
                               std::function<void(std::int16_t previousTab)> click)
    : widget_(widget), control_(control) {
  QObject::connect(&widget_, &QTabBar::currentChanged, &receiver_,
                   [this, run = std::move(run), click = std::move(click)](int index) {
                     if (pushing_ || index < 0) return;
                     const auto previousTab = static_cast<std::int16_t>(control_.Tab);
                     control_.Tab = index;
                     run([&click, previousTab] {
                       if (click) click(previousTab);
                     });
                   });
}

void TabStripBinder::Refresh() {
  pushing_ = true;
  SyncControl(widget_, control_);
  const int count = static_cast<int>(control_.TabCaptions.size());
  while (widget_.count() > count)
    widget_.removeTab(widget_.count() - 1);
  for (int i = 0; i < count; ++i) {
    const QString caption = DisplayText(control_.TabCaptions[static_cast<std::size_t>(i)]);
    if (i == widget_.count()) {
      widget_.addTab(caption);
    } else if (widget_.tabText(i) != caption) {
      widget_.setTabText(i, caption);
    }
  }
  if (control_.Tab >= 0 && control_.Tab < count && widget_.currentIndex() != control_.Tab) {
    widget_.setCurrentIndex(control_.Tab);
  }
  pushing_ = false;
}

}  // namespace ombrelay
