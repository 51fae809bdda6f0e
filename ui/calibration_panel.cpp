#include "ui/calibration_panel.h"

#include <QApplication>
#include <QCheckBox>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QTabBar>
#include <QTableWidget>

#include "shell/shared_state.h"
#include "ui/calibration_pages.h"
#include "ui/widget_factory.h"

namespace ombrelay {
namespace {

// The pages fill the panel below the tab strip; the grids stand to their right. In twips.
constexpr int kTabStripHeight = 450;
constexpr int kPageWidth = 9950;
constexpr int kPageBottom = kTabStripHeight + 9200;
constexpr int kGridsLeft = 10000;
constexpr int kGridWidth = 2800;
constexpr int kGridsRight = kGridsLeft + kGridWidth;
// Room for the grids' headings, which are wider than the grids.
constexpr int kRightMargin = 600;
// Where each grid stands until start-up places it, with its heading above it.
constexpr int kModeGridTop = 1000;
constexpr int kDataflashGridTop = 2500;
constexpr int kHeadingAboveGrid = 500;
// Below the pages: the continuous-updates box and the version line.
constexpr int kStatusLineHeight = 750;

}  // namespace

CalibrationPanel::CalibrationPanel(Host& host, Platform& platform, QWidget* parent)
    : PanelWidget(parent),
      host_(host),
      platform_(platform),
      bus_(host, [] { return QDateTime::currentMSecsSinceEpoch(); }),
      boxes_(platform),
      nbcal_(bus_, boxes_) {
  bus_.onOperation = [this](const BusOperation&) {
    if (!pressing_) bus_.Clear();
  };
  WidgetFactory make(bindings_);
  MakeTabStrip();
  const CalibrationPress press = [this](CalibrationKind kind) { Press(kind); };
  const std::array<QWidget*, 2> pages = {MakeVoltageTemperaturePage(nbcal_, make, press),
                                         MakeCurrentPage(nbcal_, make, press)};
  // Until start-up lays them out, the pages lie one over the other, the first on top.
  for (std::size_t i = pages.size(); i-- > 0;) {
    pages[i]->setObjectName(Indexed("picCalibration", i));
    pages[i]->setParent(this);
    pages[i]->setAutoFillBackground(true);
    pages[i]->setGeometry(0, TwipsToPixels(kTabStripHeight), TwipsToPixels(kPageWidth),
                          TwipsToPixels(kPageBottom - kTabStripHeight));
    bindings_.Bind(*pages[i], nbcal_.picCalibration[i]);
    bindings_.Place(*pages[i], nbcal_.picCalibration[i]);
  }
  MakeGrid(nbcal_.lblCurrentValues, "lblCurrentValues", nbcal_.displaygrid, "displaygrid",
           kModeGridTop);
  MakeGrid(nbcal_.lblCalDF, "lblCalDF", nbcal_.DFGrid, "DFGrid", kDataflashGridTop);
  MakeStatusLine();

  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget*, QWidget* now) { FocusChanged(now); });
  setMinimumSize(sizeHint());
  Refresh();
}

CalibrationPanel::~CalibrationPanel() {
  // The shared state must not point at what goes with this panel.
  if (g_oHost == &bus_) g_oHost = &host_;
  if (g_oPlatform == &boxes_) g_oPlatform = &platform_;
}

void CalibrationPanel::Press(CalibrationKind kind) {
  bus_.Clear();
  boxes_.Clear();
  pressing_ = true;
  recorder_.Pressing(nbcal_, kind);
  // A run-time error passes on to the handler's trap; the press is reported all the same.
  const auto report = [this] {
    pressing_ = false;
    if (onReport_) onReport_(recorder_.Pressed(nbcal_));
    bus_.Clear();
    boxes_.Clear();
  };
  try {
    (nbcal_.*ButtonOf(kind).click)();
  } catch (...) {
    report();
    throw;
  }
  report();
}

QSize CalibrationPanel::sizeHint() const {
  return {TwipsToPixels(kGridsRight + kRightMargin),
          TwipsToPixels(kPageBottom + kStatusLineHeight)};
}

void CalibrationPanel::MakeTabStrip() {
  auto* tabs = new QTabBar(this);
  tabs->setObjectName("SStabCal");
  tabs->setExpanding(false);
  tabs->setGeometry(0, 0, TwipsToPixels(kPageWidth), TwipsToPixels(kTabStripHeight));
  bindings_.Bind(*tabs, nbcal_.SStabCal,
                 [this](std::int16_t previousTab) { nbcal_.SStabCal_Click(previousTab); });
}

void CalibrationPanel::MakeGrid(Label& heading, const char* headingName, Grid& grid,
                                const char* gridName, int top) {
  auto* label = new QLabel(this);
  label->setObjectName(headingName);
  label->setGeometry(TwipsToPixels(kGridsLeft), TwipsToPixels(top - kHeadingAboveGrid),
                     TwipsToPixels(kGridWidth + kRightMargin), TwipsToPixels(kHeadingAboveGrid));
  bindings_.Bind(*label, heading);
  bindings_.Place(*label, heading);

  auto* table = new QTableWidget(this);
  table->setObjectName(gridName);
  table->move(TwipsToPixels(kGridsLeft), TwipsToPixels(top));
  bindings_.Bind(*table, grid);
  bindings_.Place(*table, grid);
}

void CalibrationPanel::MakeStatusLine() {
  auto* line = new QWidget(this);
  line->setGeometry(0, TwipsToPixels(kPageBottom), TwipsToPixels(kPageWidth),
                    TwipsToPixels(kStatusLineHeight));
  auto* row = new QHBoxLayout(line);
  WidgetFactory make(bindings_);
  row->addWidget(make.MakeCheckBox(nbcal_.chkUpdates, "chkUpdates"));
  row->addStretch();
  row->addWidget(make.MakeLabel(nbcal_.txtVersion, "txtVersion"));
}

void CalibrationPanel::FocusChanged(QWidget* now) {
  // The focus going to a box or another window leaves the panel's own state as it is: it
  // comes back to where it was.
  if (now == nullptr || now->window() != window()) return;
  const bool inside = now == this || isAncestorOf(now);
  if (inside == focusInside_) return;
  focusInside_ = inside;
  bindings_.Run([this, inside] {
    if (inside) {
      nbcal_.UserControl_EnterFocus();
    } else {
      nbcal_.UserControl_ExitFocus();
    }
  });
}

}  // namespace ombrelay
