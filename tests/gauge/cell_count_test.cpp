#include "gauge/cell_count.h"

#include <gtest/gtest.h>

#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"
#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using sim::Transfer;
using testing::GaugeBench;
using Lines = std::vector<std::string>;

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
      {sim::Family::Morlin, 320, {0x03, 0x00}, 2, 0, 1},  // the second byte; 00 is no count
      {sim::Family::Morlin, 320, {0x03, 0x01}, 2, 2, 0},
      {sim::Family::Morlin, 320, {0x03, 0x00}, 1, 4, 0},    // length 1: the first byte
      {sim::Family::KeldPlus, 448, {0x02, 0x03}, 2, 3, 0},  // always the first byte
      {sim::Family::KeldPlus, 448, {0x00, 0x03}, 2, 0, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(sim::FamilyName(c.family)) + " " + std::to_string(c.bytes[1]));
    GaugeBench bench(c.family);
    bench.gauge->SetDataflashBytes(c.address, c.bytes);
    g_iSystemConfigurationParamLength = c.paramLength;
    std::int16_t numCells = -1;
    EXPECT_EQ(ReadNumberofCells(numCells), c.result);
    EXPECT_EQ(numCells, c.cells);
  }
}

TEST(ReadNumberofCells, SystemConfigurationLeavesCalibrationModeFirst) {
  GaugeBench bench(sim::Family::Morlin);
  g_bInCalMode = true;
  std::int16_t numCells = 0;
  EXPECT_EQ(ReadNumberofCells(numCells), 0);
  const Lines trace = bench.Trace();
  ASSERT_GE(trace.size(), 2U);
  EXPECT_EQ(trace[0], "0 WriteSMBusWord_ 00 F080");
  EXPECT_EQ(trace[1], "53 WriteSMBusWord_ 00 F080") << "then the absolute read's own";
  EXPECT_EQ(bench.OperationsNamed("WriteSMBusWord_").back().word, 0x010A);

  bench.gauge->SetSecurityMode(sim::SecurityMode::Sealed);
  numCells = 9;
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  EXPECT_EQ(numCells, 9);
  EXPECT_EQ(bench.MessageTexts().back(),
            "Unable to read number of configured cells from Dataflash. Please check "
            "communications with device.");
}

TEST(ReadNumberofCells, QuillFindsTheSubclassInTheMapAndAsksTwice) {
  GaugeBench bench(sim::Family::Quill);
  std::int16_t numCells = 0;
  EXPECT_EQ(ReadNumberofCells(numCells), 0);
  EXPECT_EQ(bench.Trace(), (Lines{"0 CheckForError 0", "0 WriteSMBusWord 77 0040",
                                  "100 WriteSMBusWord 77 0040", "100 ReadSMBusBlock_ 78 8"}));

  // A first request that fails goes unreported; the read decides.
  bench.Restart();
  bench.gauge->FailNext(Transfer::WordWrite, 1);
  EXPECT_EQ(ReadNumberofCells(numCells), 0);
  EXPECT_EQ(bench.OperationsNamed("WriteSMBusWord").size(), 1U);
  // The second request fails; then an empty answer.
  bench.After("WriteSMBusWord", 1, [&] { bench.gauge->FailNext(Transfer::WordWrite, 1); });
  numCells = 0;
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  bench.gauge->AnswerNextBlockReadsWithLength(1, 0);
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  EXPECT_EQ(numCells, 0);
  EXPECT_EQ(bench.MessageTexts(),
            (Lines{"Attempt to request class data from Dataflash failed.  Please check "
                   "communication with device.",
                   "Unable to read class Configuration subclass Registers parameter Operation "
                   "Cfg A from Dataflash."}));

  // Map trouble: no file, or no such parameter in it. Nothing goes on the bus.
  testing::TempAppDir appdir(false);
  appdir.Write("map.json",
               R"({"format": "ombrelay-dataflash-map/1", "classes": [{"name": "Configuration",
                   "subclasses": [{"name": "Registers", "id": 64, "parameters": []}]}]})");
  bench.Restart();
  g_sDataFlashMapPath = (appdir.Path() / "missing.json").string();
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  g_sDataFlashMapPath = (appdir.Path() / "map.json").string();
  EXPECT_EQ(ReadNumberofCells(numCells), 1);
  EXPECT_TRUE(bench.Trace().empty());
  EXPECT_EQ(
      bench.MessageTexts(),
      (Lines{"Can not open Dataflash configuration file attempting to read number of "
             "configured cells. Please reinstall Quvara.",
             "Error: Could not find subclass and offset for Configuration.Registers.Operation "
             "Cfg A",
             "Unable to obtain Subclass and Offset for parameter Operation Cfg A from "
             "Dataflash. Please check communication with device."}));
}

}  // namespace
}  // namespace ombrelay
