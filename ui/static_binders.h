#pragma once
// Binders of controls that the user only looks at: labels, lines, frames, pictures, and the
// position of the controls that the panel places by their twips.

#include "ui/binding.h"

class QFrame;
class QGroupBox;
class QLabel;

namespace ombrelay {

struct Frame;
struct Label;
struct Line;
struct Picture;

class LabelBinder : public Binding {
 public:
  LabelBinder(QLabel& widget, const Label& control);
  void Refresh() override;

 private:
  QLabel& widget_;
  const Label& control_;
};

// A rule one pixel high from X1 to X2 at Y1, in its parent's coordinates: the panels' lines are
// all level.
class LineBinder : public Binding {
 public:
  LineBinder(QFrame& widget, const Line& control);
  void Refresh() override;

 private:
  QFrame& widget_;
  const Line& control_;
};

class FrameBinder : public Binding {
 public:
  FrameBinder(QGroupBox& widget, const Frame& control) : widget_(widget), control_(control) {}
  void Refresh() override;

 private:
  QGroupBox& widget_;
  const Frame& control_;
};

// Pages and done-marks: only whether they show.
class PictureBinder : public Binding {
 public:
  PictureBinder(QWidget& widget, const Picture& control) : widget_(widget), control_(control) {}
  void Refresh() override;

 private:
  QWidget& widget_;
  const Picture& control_;
};

// Keeps a widget at the control's Top and Left, and at its Width and Height once it has them;
// until then the widget takes the size it asks for. A control with no position at all leaves
// the widget where the view put it.
class PlacementBinder : public Binding {
 public:
  PlacementBinder(QWidget& widget, const Control& control) : widget_(widget), control_(control) {}
  void Refresh() override;

 private:
  QWidget& widget_;
  const Control& control_;
};

}  // namespace ombrelay
