#include "gauge/manufacturer_blocks.h"

#include <gtest/gtest.h>

#include <optional>

#include "calibration/calibration_tables.h"
#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"

namespace ombrelay {
namespace {

using testing::GaugeBench;

MODBuffer Filled(std::initializer_list<std::pair<std::size_t, std::uint16_t>> words) {
  MODBuffer buffer{};
  for (const auto& [offset, word] : words) {
    buffer[offset] = static_cast<std::uint8_t>(word & 0xFF);
    buffer[offset + 1] = static_cast<std::uint8_t>(word >> 8);
  }
  return buffer;
}

using Lines = std::vector<std::string>;

Lines Values(int block, std::initializer_list<int> slots) {
  Lines values;
  for (const int slot : slots)
    values.push_back(g_atMODBlocks[block].atFields[slot].sValue);
  return values;
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

  GaugeBench bench{sim::Family::Morlin};
  MODBuffer voltages = Filled({{0, 3700}, {2, 0xFFFF}, {10, 14800}});
  MODBuffer temperatures = Filled({{0, 2732}, {2, 2782}, {4, 2677}, {12, 2985}});
};

TEST_F(ManufacturerBlocksTest, DecodesEachTypeLowByteFirst) {
  DecodeMODBlock(0, voltages);
  EXPECT_EQ(Values(0, {0, 1, 5}), (Lines{"3700", "65535", "14800"}));
  DecodeMODBlock(1, temperatures);
  EXPECT_EQ(Values(1, {0, 1, 2, 6}), (Lines{"00.0", "05.0", "-05.5", "25.3"}));

  // Block 2: bytes, a signed word, and slot 11 beyond the field count.
  MODBuffer raw = Filled({{2, 0xFFFF}, {24, 0x1234}});
  raw[0] = 200;
  DecodeMODBlock(2, raw);
  EXPECT_EQ(Values(2, {0, 2, 11}), (Lines{"200", "-1", "4660"}));
  EXPECT_TRUE(bench.MessageTexts().empty());
}

TEST_F(ManufacturerBlocksTest, UnknownTypesEmptyTheFieldAndDecodingGoesOn) {
  g_atMODBlocks[0].atFields[0].sDataType = "U4";
  DecodeMODBlock(0, voltages);
  EXPECT_EQ(Values(0, {0, 1}), (Lines{"", "65535"}));

  g_atMODBlocks[2].atFields[8].sDataType = "T2";  // no temperatures among the raw values
  DecodeMODFieldRaw(2, 8, voltages);
  DecodeMODFieldRaw(2, 6, voltages);
  EXPECT_EQ(Values(2, {8, 6}), (Lines{"", "14800"}));
  EXPECT_TRUE(bench.Follows("gauge/decode-unknown-types"));
}

TEST_F(ManufacturerBlocksTest, ReadAllRequestsEachBlockThenTheCurrent) {
  EXPECT_EQ(ReadAllMODBlocks(), 0);
  EXPECT_EQ((Lines{Values(0, {0})[0], Values(1, {2})[0], Values(3, {0})[0]}),
            (Lines{"3700", "-05.5", "-2"}));
  EXPECT_TRUE(bench.Follows("gauge/read-all-mod-blocks"));

  // An inactive block is not requested; a failed current read empties the value only.
  g_atMODBlocks[1].bActive = false;
  bench.Restart();
  bench.gauge->FailNext(sim::Transfer::WordRead, 1);
  EXPECT_EQ(ReadAllMODBlocks(), 0);
  EXPECT_EQ(Values(3, {0}), Lines{""});
  EXPECT_TRUE(bench.Follows("gauge/read-all-mod-blocks-voltages-only"));
}

TEST_F(ManufacturerBlocksTest, AFailedReadOrARetriedRequestEmptiesOnlyTheShownFields) {
  MODBuffer buffer{};
  g_atMODBlocks[2].atFields[11].sValue = "kept";
  bench.gauge->FailNext(sim::Transfer::BlockRead, 1);
  EXPECT_EQ(ReadMODBlock(2, buffer), 0);
  EXPECT_EQ(Values(2, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}), Lines(11, ""));
  EXPECT_EQ(Values(2, {11}), Lines{"kept"});

  bench.gauge->FailNext(sim::Transfer::WordWrite, 1);
  EXPECT_EQ(ReadMODBlock(0, buffer), 0);
  EXPECT_EQ(Values(0, {0, 1, 2, 3, 4, 5}), Lines(6, ""));
  EXPECT_TRUE(bench.Follows("gauge/read-mod-block-failures"));
}

TEST_F(ManufacturerBlocksTest, ARequestThatFailsTwiceEndsTheRefresh) {
  bench.gauge->FailNext(sim::Transfer::WordWrite, 2);
  EXPECT_EQ(ReadAllMODBlocks(), 1);
  EXPECT_EQ(Values(0, {0}), Lines{"0"});

  MODBuffer buffer{};
  bench.gauge->FailNext(sim::Transfer::WordWrite, 2);
  const Status status = ReadMODBlock(1, buffer);
  EXPECT_NE(status, 0);
  EXPECT_EQ(status, bench.host.Operations().back().status);
  EXPECT_TRUE(bench.Follows("gauge/read-all-mod-blocks-request-refused"));
}

}  // namespace
}  // namespace ombrelay
