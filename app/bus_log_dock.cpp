#include "app/bus_log_dock.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>
#include <utility>

#include "app/bus_log_model.h"

namespace ombrelay {
namespace {

// The latest rows only: a scan adds dozens every two seconds.
constexpr std::size_t kRowsKept = 5000;
constexpr int kMinimumHeight = 200;
constexpr int kCellPadding = 16;

// Wide enough for sample in font, and the cell's margins.
int WidthOf(const QFont& font, const char* sample) {
  return QFontMetrics(font).horizontalAdvance(QString(sample)) + kCellPadding;
}

void SizeColumns(QTableView& table) {
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  QHeaderView& header = *table.horizontalHeader();
  header.setSectionResizeMode(QHeaderView::Interactive);
  header.resizeSection(BusLogModel::kTime, WidthOf(fixed, "00000.000"));
  header.resizeSection(BusLogModel::kOperation, WidthOf(table.font(), "block write"));
  header.resizeSection(BusLogModel::kCommand,
                       WidthOf(table.font(), "0x00 ManufacturerAccess 0x0054 Operation Status"));
  header.resizeSection(BusLogModel::kStatus, WidthOf(table.font(), "failed, code 121"));
  // The bytes take what is left; a long name or block shows whole in its tool tip.
  header.setSectionResizeMode(BusLogModel::kBytes, QHeaderView::Stretch);
  QHeaderView& rows = *table.verticalHeader();
  rows.hide();
  rows.setSectionResizeMode(QHeaderView::Fixed);
  rows.setDefaultSectionSize(QFontMetrics(fixed).height() + 4);
}

}  // namespace

BusLogDock::BusLogDock(std::function<ConfiguredCommands()> configured, QWidget* parent)
    : QDockWidget("Bus log", parent),
      decoder_(std::move(configured)),
      rows_(new BusLogModel(kRowsKept, this)),
      filtered_(new QSortFilterProxyModel(this)),
      table_(new QTableView),
      filter_(new QLineEdit),
      showKeys_(new QCheckBox("Show keys")) {
  setObjectName("busLog");
  setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);

  filtered_->setSourceModel(rows_);
  filtered_->setFilterKeyColumn(-1);
  filtered_->setFilterCaseSensitivity(Qt::CaseInsensitive);
  filter_->setObjectName("busLogFilter");
  filter_->setPlaceholderText("Filter: a command, a name, bytes, a status…");
  filter_->setClearButtonEnabled(true);
  connect(filter_, &QLineEdit::textChanged, filtered_,
          &QSortFilterProxyModel::setFilterFixedString);
  showKeys_->setObjectName("showKeys");
  connect(showKeys_, &QCheckBox::toggled, rows_, &BusLogModel::SetShowKeys);

  table_->setObjectName("busLogTable");
  table_->setModel(filtered_);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setWordWrap(false);
  table_->setAlternatingRowColors(true);
  table_->setMinimumHeight(kMinimumHeight);
  SizeColumns(*table_);

  auto* contents = new QWidget(this);
  auto* bar = new QHBoxLayout;
  bar->addWidget(filter_, 1);
  bar->addWidget(showKeys_);
  auto* layout = new QVBoxLayout(contents);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(bar);
  layout->addWidget(table_);
  setWidget(contents);
}

void BusLogDock::Add(const BusOperation& operation) {
  const QScrollBar& scroll = *table_->verticalScrollBar();
  const bool following = scroll.value() == scroll.maximum();
  rows_->Append(decoder_.Decode(operation));
  if (following) table_->scrollToBottom();
}

}  // namespace ombrelay
