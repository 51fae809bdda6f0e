#include "gauge/measurement_reads.h"

#include <gtest/gtest.h>

#include <optional>

#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "tests/support/gauge_bench.h"

namespace ombrelay {
namespace {

using testing::GaugeBench;
using testing::SimBench;

TEST(readmeasurementfromdevice, RefusesUnusableInputWithoutTouchingTheBus) {
  const std::pair<const char*, const char*> cases[] = {
      {"SBS,9", "U1"}, {"S,", "i2"},   {"SBS9", "X2"}, {"S,9", "U2"},
      {",9", "I2"},    {"SBS9", "I2"}, {",  9", "I1"}, {"SBS,", "U2"},
  };
  GaugeBench bench(sim::Family::Morlin);
  for (const auto& [command, format] : cases) {
    std::string value = "old";
    EXPECT_EQ(readmeasurementfromdevice(command, format, value), 1) << command;
    EXPECT_EQ(value, "old");
  }
  EXPECT_TRUE(bench.Follows("gauge/read-measurement-refused"));
}

TEST(readmeasurementfromdevice, SbsWordsByFormat) {
  GaugeBench bench(sim::Family::Morlin);
  bench.gauge->SetWord(0x09, 0x0FA0);
  bench.gauge->SetWord(0x0C, 0xFFFE);
  std::string value;
  const std::pair<std::string, std::string> cases[] = {{"U2", "4000"}, {"I1", "4000"}};
  for (const auto& [format, expected] : cases) {
    EXPECT_EQ(readmeasurementfromdevice("SBS, 9", format, value), 0);
    EXPECT_EQ(value, expected) << format;
  }
  EXPECT_EQ(readmeasurementfromdevice(" SBS ,12,extra", "I2", value), 0);
  EXPECT_EQ(value, "-2");

  // U2 and I1 are 16-bit signed sums: a high byte of 128 or more overflows.
  value = "old";
  EXPECT_THROW(readmeasurementfromdevice("SBS,12", "U2", value), RuntimeError);
  EXPECT_THROW(readmeasurementfromdevice("SBS,12", "I1", value), RuntimeError);
  EXPECT_EQ(value, "old");

  bench.gauge->FailNext(sim::Transfer::WordRead, 1);
  EXPECT_EQ(readmeasurementfromdevice("SBS,9", "U2", value), 0);
  EXPECT_EQ(value, kErrRd);
  EXPECT_TRUE(bench.Follows("gauge/read-measurement-sbs"));
}

TEST(readmeasurementfromdevice, MacWritesTheWordThenReadsManufacturerAccess) {
  GaugeBench bench(sim::Family::Morlin);
  bench.gauge->Commands().OnReadWord(0x00, [] { return std::optional<std::uint16_t>(2985); });
  std::string value;
  EXPECT_EQ(readmeasurementfromdevice("MAC,84", "I1", value), 0);
  EXPECT_EQ(value, "2985");
  bench.gauge->FailNext(sim::Transfer::WordWrite, 1);
  EXPECT_EQ(readmeasurementfromdevice("MAC,84", "I1", value), 0);
  EXPECT_EQ(value, kErrRd);
  value = "old";
  bench.After("WriteSMBusWord_", 1, [&] { bench.gauge->FailNext(sim::Transfer::WordRead, 1); });
  EXPECT_EQ(readmeasurementfromdevice("MAC,84", "I1", value), 0);
  EXPECT_EQ(value, kErrRd);
  EXPECT_EQ(readmeasurementfromdevice("FOO,20", "U2", value), 0);
  EXPECT_EQ(value, "0");
  EXPECT_TRUE(bench.Follows("gauge/read-measurement-mac"));
}

TEST(CellVoltages, SumFromTheBottomOfTheStack) {
  SimBench bench;
  for (std::uint8_t command = 0x38; command <= 0x3B; ++command) {
    bench.gauge->SetWord(command, 4000 + (0x3B - command) * 100);
  }
  std::string v1, v2, v3, v4;
  ReadCumulativeCellVoltages(v1, v2, v3, v4);
  EXPECT_EQ((std::vector<std::string>{v1, v2, v3, v4}),
            (std::vector<std::string>{"4000", "8100", "12300", "16600"}));

  g_bReadAltCellVoltages = true;
  ReadCellVoltagesbyConfig(v1, v2, v3, v4);
  EXPECT_EQ(v4, "16600");

  // The default commands are the other four; 0x3D goes unanswered, so the sequence ends there.
  g_bReadAltCellVoltages = false;
  bench.gauge->SetWord(0x3F, 3000);
  bench.gauge->SetWord(0x3E, 3100);
  bench.gauge->Commands().OnReadWord(0x3D, [] { return std::nullopt; });
  ReadCellVoltagesbyConfig(v1, v2, v3, v4);
  EXPECT_EQ((std::vector<std::string>{v1, v2, v3, v4}),
            (std::vector<std::string>{"3000", "6100", kErrRd, kErrRd}));

  bench.gauge->FailNext(sim::Transfer::WordRead, 1);
  ReadCumulativeCellVoltages(v1, v2, v3, v4);
  EXPECT_EQ((std::vector<std::string>{v1, v2, v3, v4}), (std::vector<std::string>(4, kErrRd)));
  EXPECT_TRUE(testing::MatchesTrace(bench.trace.Lines(), "gauge/cell-voltages"));
}

TEST(CellVoltages, SixteenBitSumsOverflow) {
  SimBench bench;
  for (std::uint8_t command = 0x38; command <= 0x3B; ++command)
    bench.gauge->SetWord(command, 16000);
  std::string v1, v2, v3, v4 = "old";
  // The upper two cumulative sums are made in double precision.
  ReadCumulativeCellVoltages(v1, v2, v3, v4);
  EXPECT_EQ((std::vector<std::string>{v1, v2, v3, v4}),
            (std::vector<std::string>{"16000", "32000", "48000", "64000"}));

  v3 = "old";
  v4 = "old";
  g_bReadAltCellVoltages = true;
  EXPECT_THROW(ReadCellVoltagesbyConfig(v1, v2, v3, v4), RuntimeError);
  EXPECT_EQ(v2, "32000");
  EXPECT_EQ(v3, "old");
  EXPECT_EQ(v4, "old");

  bench.gauge->SetWord(0x3A, 20000);
  EXPECT_THROW(ReadCumulativeCellVoltages(v1, v2, v3, v4), RuntimeError);
  EXPECT_EQ(v2, "32000");
}

}  // namespace
}  // namespace ombrelay
