#include "gauge/cell_count.h"

#include <gtest/gtest.h>

#include "config/map_library.h"
#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"
#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using sim::Transfer;
using testing::GaugeBench;

TEST(ReadNumberofCells, EachFamilyCodesTheCountItsOwnWay) {
  struct Case {
    sim::Family family;
    std::size_t address;
    sim::Bytes bytes;
    std::int16_t paramLength;
    std::int16_t cells;
    Status result;
  };
  const Case cases[] = {
      {sim::Family::Keld, 128, {0x00, 0x03}, 2, 1, 1},  // 1 cell is no valid count
      {sim::Family::Keld, 128, {0xFF, 0x00}, 2, 4, 0},  // only the low two bits count
      {sim::Family::Keld, 128, {0x01, 0xFF}, 2, 2, 0},
      {sim::Family::Quill, 64, {0x02, 0x29}, 2, 3, 0},  // byte 0 of the subclass
      {sim::Family::Quill, 64, {0x00, 0x03}, 2, 1, 1},
      {sim::Family::Morlin, 320, {0x03, 0x00}, 2, 0, 1},  // the second byte; 00 is no count
      {sim::Family::Morlin, 320, {0x03, 0x01}, 2, 2, 0},
      {sim::Family::Morlin, 320, {0x03, 0x00}, 1, 4, 0},    // length 1: the first byte
      {sim::Family::KeldPlus, 448, {0x02, 0x03}, 2, 3, 0},  // always the first byte
      {sim::Family::KeldPlus, 448, {0x00, 0x03}, 2, 0, 1},
  };
  for (const Case& c : cases) {
    const std::string family(sim::FamilyName(c.family));
    SCOPED_TRACE(family + " " + std::to_string(c.bytes[0]) + " " + std::to_string(c.bytes[1]));
    GaugeBench bench(c.family);
    bench.gauge->SetDataflashBytes(c.address, c.bytes);
    g_iSystemConfigurationParamLength = c.paramLength;
    std::int16_t numCells = -1;
    EXPECT_EQ(ReadNumberofCells(numCells), c.result);
    EXPECT_EQ(numCells, c.cells);
    EXPECT_TRUE(bench.Follows("gauge/read-number-of-cells-" + family));
    EXPECT_TRUE(bench.platform.Messages().empty());
    EXPECT_EQ(GetNumClasses(), 0) << "QUILL's search leaves no map loaded";
  }
}

TEST(ReadNumberofCells, SystemConfigurationLeavesCalibrationModeFirst) {
  GaugeBench bench(sim::Family::Morlin);
  g_bInCalMode = true;
  std::int16_t numCells = 0;
  EXPECT_EQ(ReadNumberofCells(numCells), 0);
  EXPECT_EQ(numCells, 3);

  bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  numCells = 9;
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  EXPECT_EQ(numCells, 9);
  EXPECT_TRUE(bench.Follows("gauge/read-number-of-cells-in-calibration-mode-morlin"));
}

TEST(ReadNumberofCells, FailedReadsOfKeldAndKeldPlus) {
  GaugeBench keld(sim::Family::Keld);
  keld.gauge->FailNext(Transfer::WordRead, 1);
  std::int16_t numCells = 9;
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  EXPECT_EQ(numCells, 9);
  EXPECT_TRUE(keld.Follows("gauge/read-number-of-cells-failures-keld"));

  GaugeBench keldPlus(sim::Family::KeldPlus);
  keldPlus.gauge->AnswerNextBlockReadsWithLength(1, 31);
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  EXPECT_EQ(numCells, 0);
  EXPECT_TRUE(keldPlus.Follows("gauge/read-number-of-cells-short-keld_plus"));
}

TEST(ReadNumberofCells, QuillStopsAtTheFirstOfItsFailures) {
  GaugeBench bench(sim::Family::Quill);
  std::int16_t numCells = 0;
  ReadNumberofCells(numCells);
  bench.Restart();

  bench.gauge->FailNext(Transfer::WordWrite, 1);
  numCells = 0;
  EXPECT_EQ(ReadNumberofCells(numCells), 0);
  EXPECT_EQ(numCells, 3);

  numCells = 9;
  bench.After("WriteSMBusWord", 1, [&] {
    bench.gauge->FailNext(Transfer::WordWrite, 1);
    bench.gauge->FailNext(Transfer::BlockRead, 1);
  });
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  bench.gauge->AnswerNextBlockReadsWithLength(1, 0);
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  EXPECT_EQ(numCells, 9);

  testing::TempAppDir appdir(false);
  appdir.Write("map.json",
               R"({"format": "ombrelay-dataflash-map/1", "classes": [{"name": "Configuration",
                   "subclasses": [{"name": "Registers", "id": 64, "parameters": []}]}]})");
  bench.gauge->SetDisconnected(true);
  g_sDataFlashMapPath = (appdir.Path() / "missing.json").string();
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  g_sDataFlashMapPath = (appdir.Path() / "map.json").string();
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  EXPECT_EQ(numCells, 9);
  EXPECT_TRUE(bench.Follows("gauge/read-number-of-cells-failures-quill"));
}

}  // namespace
}  // namespace ombrelay
