#include "hosts/recording_host.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>

#include "hosts/sim_host.h"
#include "sim/sample_gauges.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kAddress = 23;

class RecordingHostTest : public ::testing::Test {
 protected:
  RecordingHostTest() { bus.Attach(gauge.get()); }

  // A little of everything, with time passing between the calls.
  void RunSequence() {
    const std::array<std::uint8_t, 4> request = {0xAB, 0x01, 0x00, 0xFF};
    host.WriteSMBusBlock(0x20, request, 3, kAddress);
    host.Delay(250);
    host.CheckForError();
    host.CheckForError();
    std::array<std::uint8_t, 32> buffer{};
    std::int16_t length = 11;
    host.ReadSMBusBlock_(0x2F, buffer, length, kAddress);
    clock.Advance(7);
    std::int16_t word = 0;
    host.ReadSMBusWord_(0x0D, word, kAddress);
    host.WriteSMBusWord_(0x00, -2, kAddress);
    std::uint8_t high = 0;
    std::uint8_t low = 0;
    host.ReadSMBusWord(0x00, high, low, kAddress);
    host.WriteSMBusWord(0x00, 0x12, 0x34, 22);
  }

  sim::VirtualClock clock{1000};
  std::unique_ptr<sim::Gauge> gauge = sim::MakeSampleGauge(sim::Family::Morlin, clock);
  SimHost bus{clock};
  RecordingHost host{bus, [this] { return clock.NowMs(); }};
};

TEST_F(RecordingHostTest, LogsJsonLinesAsTheyHappen) {
  const auto path = std::filesystem::path(::testing::TempDir()) / "recording_host_test.jsonl";
  ASSERT_TRUE(host.OpenLog(path.string()));
  RunSequence();

  std::ifstream file(path);
  std::vector<nlohmann::json> lines;
  for (std::string line; std::getline(file, line);)
    lines.push_back(nlohmann::json::parse(line));
  ASSERT_EQ(lines.size(), host.Operations().size());
  for (std::size_t i = 0; i < lines.size(); ++i)
    EXPECT_EQ(lines[i], ToJson(host.Operations()[i]));

  EXPECT_EQ(lines[0], nlohmann::json::parse(R"({"t_ms": 1000, "op": "WriteSMBusBlock", "cmd": 32,
      "data": "AB0100", "len": 3, "status": 0, "address": 23})"));
  EXPECT_EQ(lines[4]["data"], "4D31020500200100000000");
  EXPECT_EQ(lines[6], nlohmann::json::parse(R"({"t_ms": 1257, "op": "WriteSMBusWord_", "cmd": 0,
      "data": "FEFF", "len": 2, "status": 0, "word": 65534, "address": 23})"));
  std::filesystem::remove(path);

  EXPECT_FALSE(host.OpenLog((path.parent_path() / "no such folder" / "log.jsonl").string()));
  host.CheckForError();  // nothing to write to, nothing breaks
  EXPECT_EQ(host.Operations().back().op, "CheckForError");
}

}  // namespace
}  // namespace ombrelay
