#include "gauge/manufacturer_blocks.h"

#include <gtest/gtest.h>

#include <optional>

#include "calibration/calibration_tables.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

using testing::SimBench;

constexpr const char* kBlockError =
    "Error returning values of Manufacturing Block. Please check communications.";

MODBuffer Filled(std::initializer_list<std::pair<std::size_t, std::uint16_t>> words) {
  MODBuffer buffer{};
  for (const auto& [offset, word] : words) {
    buffer[offset] = static_cast<std::uint8_t>(word & 0xFF);
    buffer[offset + 1] = static_cast<std::uint8_t>(word >> 8);
  }
  return buffer;
}

const std::string& Value(int block, int slot) {
  return g_atMODBlocks[block].atFields[slot].sValue;
}

// A gauge that answers the manufacturer data command with the block last selected.
class ManufacturerBlocksTest : public ::testing::Test {
 protected:
  void SetUp() override {
    CalInit();
    bench.gauge->Commands().OnReadBlock(0x23, [this]() -> std::optional<sim::Bytes> {
      const MODBuffer& block =
          bench.gauge->ManufacturerAccessWord() == 0x0072 ? temperatures : voltages;
      return sim::Bytes(block.begin(), block.begin() + 32);
    });
    bench.gauge->SetWord(0x0A, 0xFFFE);
  }

  SimBench bench{sim::Family::Morlin};
  MODBuffer voltages = Filled({{0, 3700}, {2, 0xFFFF}, {10, 14800}});
  MODBuffer temperatures = Filled({{0, 2732}, {2, 2782}, {4, 2677}, {12, 2985}});
};

TEST_F(ManufacturerBlocksTest, DecodesEachTypeLowByteFirst) {
  DecodeMODBlock(0, voltages);
  EXPECT_EQ(Value(0, 0), "3700");
  EXPECT_EQ(Value(0, 1), "65535");
  EXPECT_EQ(Value(0, 5), "14800");

  DecodeMODBlock(1, temperatures);
  EXPECT_EQ(Value(1, 0), "00.0");
  EXPECT_EQ(Value(1, 1), "05.0");
  EXPECT_EQ(Value(1, 2), "-05.5");
  EXPECT_EQ(Value(1, 6), "25.3");

  // Block 2: bytes, a signed word, and slot 11 beyond the field count.
  MODBuffer raw = Filled({{2, 0xFFFF}, {24, 0x1234}});
  raw[0] = 200;
  DecodeMODBlock(2, raw);
  EXPECT_EQ(Value(2, 0), "200");
  EXPECT_EQ(Value(2, 2), "-1");
  EXPECT_EQ(Value(2, 11), "4660");
  EXPECT_TRUE(bench.MessageTexts().empty());
}

TEST_F(ManufacturerBlocksTest, UnknownTypesEmptyTheFieldAndDecodingGoesOn) {
  g_atMODBlocks[0].atFields[0].sDataType = "U4";
  DecodeMODBlock(0, voltages);
  EXPECT_EQ(Value(0, 0), "");
  EXPECT_EQ(Value(0, 1), "65535");

  g_atMODBlocks[2].atFields[8].sDataType = "T2";  // no temperatures among the raw values
  DecodeMODFieldRaw(2, 8, voltages);
  EXPECT_EQ(Value(2, 8), "");
  DecodeMODFieldRaw(2, 6, voltages);
  EXPECT_EQ(Value(2, 6), "14800");
  EXPECT_EQ(bench.MessageTexts(),
            (std::vector<std::string>{"Unknown data type",
                                      "Unknown data type reading data into local structure."}));
}

TEST_F(ManufacturerBlocksTest, ReadAllRequestsEachBlockThenTheCurrent) {
  EXPECT_EQ(ReadAllMODBlocks(), 0);
  EXPECT_EQ(Value(0, 0), "3700");
  EXPECT_EQ(Value(1, 2), "-05.5");
  EXPECT_EQ(Value(3, 0), "-2");

  const auto& ops = bench.host.Operations();
  std::vector<std::string> sequence;
  for (const auto& op : ops)
    sequence.push_back(op.op + " " + std::to_string(op.cmd));
  ASSERT_EQ(sequence, (std::vector<std::string>{"WriteSMBusWord_ 0", "ReadSMBusBlock_ 35",
                                                "WriteSMBusWord_ 0", "ReadSMBusBlock_ 35",
                                                "ReadSMBusWord 10"}));
  EXPECT_EQ(ops[0].word, 0x0071);
  EXPECT_EQ(ops[2].word, 0x0072);
  EXPECT_EQ(ops[1].tMs, ops[0].tMs);  // no wait between request and read

  // An inactive block is not requested; a failed current read empties the value only.
  g_atMODBlocks[1].bActive = false;
  bench.host.Clear();
  bench.gauge->FailNext(sim::Transfer::WordRead, 1);
  EXPECT_EQ(ReadAllMODBlocks(), 0);
  EXPECT_EQ(bench.OperationsNamed("ReadSMBusBlock_").size(), 1U);
  EXPECT_EQ(Value(3, 0), "");
}

TEST_F(ManufacturerBlocksTest, AFailedReadEmptiesOnlyTheShownFields) {
  MODBuffer buffer{};
  g_atMODBlocks[2].atFields[11].sValue = "kept";
  bench.gauge->FailNext(sim::Transfer::BlockRead, 1);
  EXPECT_EQ(ReadMODBlock(2, buffer), 0);
  for (int slot = 0; slot < 11; ++slot)
    EXPECT_EQ(Value(2, slot), "") << slot;
  EXPECT_EQ(Value(2, 11), "kept");
  EXPECT_TRUE(bench.MessageTexts().empty());
}

TEST_F(ManufacturerBlocksTest, ARequestThatGoesThroughOnTheRetryIsNotRead) {
  MODBuffer buffer{};
  bench.gauge->FailNext(sim::Transfer::WordWrite, 1);
  EXPECT_EQ(ReadMODBlock(0, buffer), 0);
  const auto writes = bench.OperationsNamed("WriteSMBusWord_");
  ASSERT_EQ(writes.size(), 2U);
  EXPECT_GE(writes[1].tMs - writes[0].tMs, 50);
  EXPECT_EQ(writes[1].word, 0x0071);
  EXPECT_TRUE(bench.OperationsNamed("ReadSMBusBlock_").empty());
  for (int slot = 0; slot < 6; ++slot)
    EXPECT_EQ(Value(0, slot), "") << slot;
  EXPECT_TRUE(bench.MessageTexts().empty());
}

TEST_F(ManufacturerBlocksTest, ARequestThatFailsTwiceEndsTheRefresh) {
  bench.gauge->FailNext(sim::Transfer::WordWrite, 2);
  EXPECT_EQ(ReadAllMODBlocks(), 1);
  EXPECT_EQ(bench.MessageTexts(),
            (std::vector<std::string>{"Failed to Write Command Voltages", kBlockError}));
  EXPECT_EQ(bench.host.Operations().size(), 2U);  // neither a block nor the current is read
  EXPECT_EQ(Value(0, 0), "0");

  MODBuffer buffer{};
  bench.host.Clear();
  bench.gauge->FailNext(sim::Transfer::WordWrite, 2);
  const Status status = ReadMODBlock(1, buffer);
  EXPECT_NE(status, 0);
  EXPECT_EQ(status, bench.host.Operations().back().status);
  EXPECT_EQ(bench.MessageTexts().back(), "Failed to Write Command Temperatures");
}

}  // namespace
}  // namespace ombrelay
