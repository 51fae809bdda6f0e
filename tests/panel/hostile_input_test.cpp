// Start-up against input that is wrong in every way we can think of: it must report, never
// crash, and never write the gauge.

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "panel/nbcal.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"
#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using testing::SimBench;
using testing::TempAppDir;

constexpr std::array kFamilies = {sim::Family::Keld, sim::Family::Quill, sim::Family::Morlin,
                                  sim::Family::KeldPlus};

// The only blocks start-up may send are the three requests that precede identification.
void ExpectNoDataflashWritten(const SimBench& bench) {
  for (const BusOperation& operation : bench.OperationsNamed("WriteSMBusBlock")) {
    EXPECT_EQ(operation.len, 62) << "block write on command " << operation.cmd;
  }
}

void StartUp(SimBench& bench) {
  NBCal panel(bench.host, bench.platform);
  panel.UserControl_Show();
}

TEST(HostileInput, AGaugeAnsweringEveryBlockWithAnyLength) {
  for (const sim::Family family : kFamilies) {
    for (int length = 0; length <= 255; ++length) {
      SCOPED_TRACE(std::string(sim::FamilyName(family)) + " " + std::to_string(length));
      SimBench bench(family);
      // Once the gauge has told what it is, every block comes back at this length.
      bool identified = false;
      bench.afterOperation = [&bench, &identified, length](const BusOperation& operation) {
        if (!identified && operation.op == "ReadSMBusBlock_" && operation.cmd == 0x2F) {
          identified = true;
          bench.gauge->AnswerNextBlockReadsWithLength(1000, static_cast<std::uint8_t>(length));
        }
      };
      StartUp(bench);
      EXPECT_FALSE(g_sDeviceNumber.empty());
      ExpectNoDataflashWritten(bench);
      if (::testing::Test::HasFailure()) return;
    }
  }
}

TEST(HostileInput, AMapWithAbsurdOffsets) {
  TempAppDir appdir;
  const auto mapPath = appdir.Path() / "maps" / "morlin-4D31-2_05.json";
  nlohmann::json map = nlohmann::json::parse(std::ifstream(mapPath));
  for (auto& subclass : map["classes"][1]["subclasses"]) {
    for (auto& parameter : subclass["parameters"])
      parameter["offset"] = 65535;
  }
  appdir.Write("maps/morlin-4D31-2_05.json", map.dump());

  SimBench bench(sim::Family::Morlin, appdir.Path().string());
  StartUp(bench);
  ASSERT_FALSE(bench.MessageTexts().empty());
  EXPECT_EQ(bench.MessageTexts().front(),
            "General Error reading configuration file. Error returned was Overflow");
  ExpectNoDataflashWritten(bench);
}

TEST(HostileInput, ConfigIniFullOfGarbage) {
  const std::vector<std::string> files = {
      std::string("[D4D31]\n\0\x01\x02\xff=\xfe\n", 14) + std::string(100000, '\x7f'),
      "[D4D31]\nDFType=MORLIN\nDFAccessFlashCmd=999999\nManuDataCmd=-40000\n",
      "[D4D31]\nDFType=MORLIN\nMorlinSystemConfigLocation=,,,\nZenoMAC=-1\n",
      "[D4D31]\nDFType=QUILL\nCCOffsetSampleLocation=" + std::string(5000, 'q') +
          "\nTS1readTemperature=MAC,-5\nTS2readTemperature=SBS,99999999999999999999\n",
      "[D4D31]\nDFType=KELD_PLUS\nMorlinSystemConfigLocation=Configuration,Registers,Operation "
      "Cfg A\nDFAccessFlashCmd=255\nTS1readTemperature=SBS,7\nTS2Supported=0\n"
      "KELDPLUSCALFLAGBITPOS=-9\n",
  };
  for (const std::string& file : files) {
    SCOPED_TRACE(file.substr(0, 60));
    TempAppDir appdir;
    appdir.Write("config.ini", file);
    SimBench bench(sim::Family::Morlin, appdir.Path().string());
    EXPECT_NO_THROW(StartUp(bench));
    ExpectNoDataflashWritten(bench);
  }
}

}  // namespace
}  // namespace ombrelay
