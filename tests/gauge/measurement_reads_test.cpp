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
using Lines = std::vector<std::string>;

constexpr const char* kFormatMessage =
    "Format specified in function readmeasurementfromdevice is not supported.";
constexpr const char* kLengthMessage =
    "Error in length of read command string in function readmeasurementfromdevice.";
constexpr const char* kCommandMessage =
    "Error in format of read command string in function readmeasurementfromdevice.";

std::vector<std::int32_t> Commands(const SimBench& bench) {
  std::vector<std::int32_t> commands;
  for (const auto& operation : bench.host.Operations())
    commands.push_back(operation.cmd);
  return commands;
}

TEST(readmeasurementfromdevice, RefusesUnusableInputWithoutTouchingTheBus) {
  struct Case {
    const char* command;
    const char* format;
    const char* message;
  };
  const Case cases[] = {
      {"SBS,9", "U1", kFormatMessage}, {"S,", "i2", kFormatMessage},  // format is checked first
      {"S,9", "U2", kLengthMessage},   {"SBS9", "I2", kCommandMessage},
      {",  9", "I1", kCommandMessage}, {"SBS,", "U2", kCommandMessage},
  };
  for (const Case& c : cases) {
    SimBench bench;
    std::string value = "old";
    EXPECT_EQ(readmeasurementfromdevice(c.command, c.format, value), 1) << c.command;
    EXPECT_EQ(bench.MessageTexts(), std::vector<std::string>{c.message}) << c.command;
    EXPECT_EQ(value, "old");
    EXPECT_TRUE(bench.host.Operations().empty());
  }
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
  EXPECT_EQ(bench.Trace(), (Lines{"0 ReadSMBusWord 09 0FA0", "0 ReadSMBusWord 09 0FA0",
                                  "0 ReadSMBusWord 0C FFFE"}));

  // U2 and I1 are 16-bit signed sums: a high byte of 128 or more overflows.
  value = "old";
  EXPECT_THROW(readmeasurementfromdevice("SBS,12", "U2", value), RuntimeError);
  EXPECT_THROW(readmeasurementfromdevice("SBS,12", "I1", value), RuntimeError);
  EXPECT_EQ(value, "old");

  bench.gauge->FailNext(sim::Transfer::WordRead, 1);
  EXPECT_EQ(readmeasurementfromdevice("SBS,9", "U2", value), 0);
  EXPECT_EQ(value, kErrRd);
  EXPECT_TRUE(bench.MessageTexts().empty());
}

TEST(readmeasurementfromdevice, MacWritesTheWordThenReadsManufacturerAccess) {
  GaugeBench bench(sim::Family::Morlin);
  bench.gauge->Commands().OnReadWord(0x00, [] { return std::optional<std::uint16_t>(2985); });
  std::string value;
  EXPECT_EQ(readmeasurementfromdevice("MAC,84", "I1", value), 0);
  EXPECT_EQ(value, "2985");
  EXPECT_EQ(bench.Trace(), (Lines{"0 WriteSMBusWord_ 00 0054", "3 ReadSMBusWord 00 0BA9"}));
  bench.host.Clear();
  bench.gauge->FailNext(sim::Transfer::WordWrite, 1);
  EXPECT_EQ(readmeasurementfromdevice("MAC,84", "I1", value), 0);
  EXPECT_EQ(value, kErrRd);
  EXPECT_EQ(bench.host.Operations().size(), 1U);  // nothing read after a failed request

  bench.host.Clear();
  EXPECT_EQ(readmeasurementfromdevice("FOO,20", "U2", value), 0);
  EXPECT_EQ(value, "0");
  EXPECT_TRUE(bench.host.Operations().empty());
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
  EXPECT_EQ(Commands(bench), (std::vector<std::int32_t>{0x3B, 0x3A, 0x39, 0x38}));

  bench.host.Clear();
  g_bReadAltCellVoltages = true;
  ReadCellVoltagesbyConfig(v1, v2, v3, v4);
  EXPECT_EQ(v4, "16600");
  EXPECT_EQ(Commands(bench), (std::vector<std::int32_t>{0x3B, 0x3A, 0x39, 0x38}));

  // The default commands are the other four; 0x3D goes unanswered, so the sequence ends there.
  bench.host.Clear();
  g_bReadAltCellVoltages = false;
  bench.gauge->SetWord(0x3F, 3000);
  bench.gauge->SetWord(0x3E, 3100);
  bench.gauge->Commands().OnReadWord(0x3D, [] { return std::nullopt; });
  ReadCellVoltagesbyConfig(v1, v2, v3, v4);
  EXPECT_EQ((std::vector<std::string>{v1, v2, v3, v4}),
            (std::vector<std::string>{"3000", "6100", kErrRd, kErrRd}));
  EXPECT_EQ(Commands(bench), (std::vector<std::int32_t>{0x3F, 0x3E, 0x3D}));

  bench.gauge->FailNext(sim::Transfer::WordRead, 1);
  ReadCumulativeCellVoltages(v1, v2, v3, v4);
  EXPECT_EQ((std::vector<std::string>{v1, v2, v3, v4}), (std::vector<std::string>(4, kErrRd)));
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
