// The bench's bus log dock: the decoded rows as its table shows them, through the filter and
// the Show keys box as an engineer uses them, failed rows marked, and the latest rows kept.

#include "app/bus_log_dock.h"

#include <gtest/gtest.h>

#include <QAbstractItemModel>
#include <QBrush>
#include <QCheckBox>
#include <QLineEdit>
#include <QTableView>
#include <string>
#include <vector>

#include "app/bus_log_model.h"
#include "shell/shared_state.h"
#include "tests/support/hand_made_operations.h"

namespace ombrelay {
namespace {

using testing::Block;
using testing::Word;

// config.ini's defaults on a MORLIN.
ConfiguredCommands MorlinCommands() {
  ConfiguredCommands commands;
  commands.family = MORLIN;
  commands.manufacturerData = 0x23;
  commands.dataflashRows = 0x2F;
  return commands;
}

// Every cell of a table's rows, a row a line, " | " between the cells.
std::vector<std::string> Lines(const QAbstractItemModel& table) {
  std::vector<std::string> lines;
  for (int row = 0; row < table.rowCount(); ++row) {
    QStringList cells;
    for (int column = 0; column < table.columnCount(); ++column)
      cells << table.index(row, column).data().toString();
    lines.push_back(cells.join(" | ").toStdString());
  }
  return lines;
}

class BusLogDockTest : public ::testing::Test {
 protected:
  // A key change to the Unseal key, and a status read whose block does not come.
  BusLogDockTest() {
    dock.Add(Word("WriteSMBusWord_", 0x00, 0x0035, 1000));
    dock.Add(Block("ReadSMBusBlock_", 0x2F, {0x0A, 0x0B, 0x0C}, 1023));
    dock.Add(Block("WriteSMBusBlock", 0x2F, {0xFF, 0xEE, 0xDD}, 1043));
    dock.Add(Block("ReadSMBusBlock_", 0x2F, {0x1D, 0x1E, 0x1F}, 1295));
    dock.Add(Word("WriteSMBusWord_", 0x00, 0x0054, 2000));
    dock.Add(Block("ReadSMBusBlock_", 0x23, {}, 2013, 1));
  }

  std::vector<std::string> Shown() const { return Lines(*Find<QTableView>("busLogTable").model()); }
  void Filter(const char* text) { Find<QLineEdit>("busLogFilter").setText(text); }
  void ShowKeys(bool show) { Find<QCheckBox>("showKeys").setChecked(show); }

  template <typename Widget>
  Widget& Find(const char* name) const {
    auto* widget = dock.findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return *widget;
  }

  BusLogDock dock{MorlinCommands};
};

TEST_F(BusLogDockTest, FiltersOnWhatItShowsInEveryColumn) {
  const std::vector<std::string> all = {
      "0.000 | word write | 0x00 ManufacturerAccess 0x0035 change Unseal key | 35 00 | ok",
      "0.023 | block read | 0x2F challenge | 0A 0B 0C | ok",
      "0.043 | block write | 0x2F new key | ** ** ** | ok",
      "0.295 | block read | 0x2F digest | 1D 1E 1F | ok",
      "1.000 | word write | 0x00 ManufacturerAccess 0x0054 Operation Status | 54 00 | ok",
      "1.013 | block read | 0x23 ManufacturerData 0x0054 Operation Status |  | failed, code 1"};
  EXPECT_EQ(Shown(), all);

  Filter("CHALLENGE");
  EXPECT_EQ(Shown(), std::vector<std::string>{all[1]});
  Filter("operation status");
  EXPECT_EQ(Shown(), (std::vector<std::string>{all[4], all[5]}));
  Filter("failed");
  EXPECT_EQ(Shown(), std::vector<std::string>{all[5]});
  Filter("1e 1f");
  EXPECT_EQ(Shown(), std::vector<std::string>{all[3]});
  // A withheld key is not found by its bytes either.
  Filter("ff ee");
  EXPECT_TRUE(Shown().empty());
  ShowKeys(true);
  EXPECT_EQ(Shown(),
            std::vector<std::string>{"0.043 | block write | 0x2F new key | FF EE DD | ok"});

  Filter("");
  ShowKeys(false);
  EXPECT_EQ(Shown(), all);
}

TEST_F(BusLogDockTest, MarksFailedRowsOnly) {
  const QAbstractItemModel& table = *Find<QTableView>("busLogTable").model();
  for (int row = 0; row < table.rowCount(); ++row) {
    const bool failed = row == table.rowCount() - 1;
    for (int column = 0; column < table.columnCount(); ++column) {
      EXPECT_EQ(table.index(row, column).data(Qt::BackgroundRole).canConvert<QBrush>(), failed)
          << row << ", " << column;
    }
  }
}

TEST(BusLogModel, KeepsTheLatestRows) {
  BusLogModel model(2);
  for (const char* time : {"0.000", "0.003", "0.013"}) {
    BusLogRow row;
    row.time = time;
    row.operation = "word write";
    model.Append(row);
  }
  EXPECT_EQ(Lines(model), (std::vector<std::string>{"0.003 | word write |  |  | ",
                                                    "0.013 | word write |  |  | "}));
}

}  // namespace
}  // namespace ombrelay
