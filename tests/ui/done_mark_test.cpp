#include "ui/done_mark.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QVBoxLayout>

namespace ombrelay {
namespace {

TEST(DoneMark, ShowingItMovesNothingBelowIt) {
  QWidget window;
  auto* column = new QVBoxLayout(&window);
  auto* mark = new DoneMark;
  auto* below = new QLabel("below");
  column->addWidget(mark);
  column->addWidget(below);
  column->addStretch();
  mark->hide();
  window.show();
  column->activate();
  const QPoint hidden = below->pos();

  mark->show();
  column->activate();
  EXPECT_EQ(below->pos(), hidden);
  EXPECT_GT(hidden.y(), mark->sizeHint().height()) << "the hidden mark keeps its room";
}

}  // namespace
}  // namespace ombrelay
