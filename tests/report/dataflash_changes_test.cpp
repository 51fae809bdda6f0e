// The dataflash bytes a calibration report names, from the bus operations alone: only the area a
// selection points the data command at, old bytes from before the write, read-backs from after.

#include "report/dataflash_changes.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kRowData = 0x2F;
constexpr std::uint16_t kExitWord = 0xF080;

BusOperation Word(std::int32_t cmd, std::uint16_t word, std::int32_t status = 0) {
  BusOperation op;
  op.op = "WriteSMBusWord_";
  op.cmd = cmd;
  op.word = word;
  op.len = 2;
  op.status = status;
  return op;
}

BusOperation Block(const char* name, std::int32_t cmd, std::vector<std::uint8_t> data) {
  BusOperation op;
  op.op = name;
  op.cmd = cmd;
  op.len = static_cast<std::int32_t>(data.size());
  op.data = std::move(data);
  return op;
}

BusOperation Read(std::int32_t cmd, std::vector<std::uint8_t> data) {
  return Block("ReadSMBusBlock_", cmd, std::move(data));
}
BusOperation Write(std::int32_t cmd, std::vector<std::uint8_t> data) {
  return Block("WriteSMBusBlock", cmd, std::move(data));
}

TEST(DataflashChanges, RowsTellOldWrittenAndReadBackByAbsoluteAddress) {
  const std::vector<BusOperation> ops = {
      // No row selected after the exit word: what the data command gives is no row's.
      Word(0x00, kExitWord),
      Read(kRowData, {9, 9, 9}),
      Word(0x00, 0x0101),
      Read(kRowData, {1, 2, 3}),
      Word(0x00, 0x0101),
      Write(kRowData, {1, 5, 3}),
      Word(0x00, 0x0101),
      Read(kRowData, {1, 5, 4}),
      // A selection that failed points nowhere: its write is no row's.
      Word(0x00, 0x0100, -5),
      Write(kRowData, {7, 7, 7}),
      // A later read is no read-back.
      Word(0x00, 0x0101),
      Read(kRowData, {0, 0, 0}),
      Word(0x00, 0x0102),
      Write(kRowData, {8}),
  };
  const std::vector<ChangedByte> expected = {
      {"row 1", 33, 2, 5, 5},
      {"row 1", 34, 3, 3, 4},
      {"row 2", 64, std::nullopt, 8, std::nullopt},
  };
  EXPECT_EQ(DataflashChanges(ops, {MORLIN, kRowData}), expected);
  // The same words mean nothing on a family without rows.
  EXPECT_EQ(DataflashChanges(ops, {QUILL, kRowData}), std::vector<ChangedByte>{});
}

TEST(DataflashChanges, KeldBlockAndQuillSubclassByOffset) {
  const std::vector<BusOperation> keld = {Read(0x58, {0x10, 0x20}), Write(0x58, {0x11, 0x20}),
                                          Read(0x58, {0x11, 0x20}), Read(0x2F, {0, 0}),
                                          Write(0x2F, {5, 5})};
  EXPECT_EQ(DataflashChanges(keld, {KELD, kRowData}),
            (std::vector<ChangedByte>{{"block 0x58", 0, 0x10, 0x11, 0x11}}));
  // Written again and not read back: what the gauge kept of it is not known.
  std::vector<BusOperation> rewritten = keld;
  rewritten.push_back(Write(0x58, {0x12, 0x20}));
  EXPECT_EQ(DataflashChanges(rewritten, {KELD, kRowData}),
            (std::vector<ChangedByte>{{"block 0x58", 0, 0x10, 0x12, std::nullopt}}));

  const std::vector<BusOperation> quill = {
      Word(0x77, 0x68),     Read(0x78, {4, 4}), Word(0x77, 0x68), Write(0x78, {4, 6}),
      Word(0x77, 0x68, -1), Read(0x78, {0, 0}), Word(0x77, 0x68), Read(0x78, {4, 6})};
  EXPECT_EQ(DataflashChanges(quill, {QUILL, kRowData}),
            (std::vector<ChangedByte>{{"subclass 0x68", 1, 4, 6, 6}}));
}

}  // namespace
}  // namespace ombrelay
