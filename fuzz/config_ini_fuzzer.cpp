// The input is the application directory's config.ini: the three profile calls and the reading
// of a device's section, on the sections and keys of the shipped file and on those the input
// names. Boxes are fine; a crash, a hang or an escaping exception is a finding.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/configuration_section.h"
#include "config/profile.h"
#include "fuzz/input_names.h"
#include "fuzz/scratch_file.h"
#include "platforms/virtual_platform.h"
#include "shell/shared_state.h"
#include "sim/clock.h"

namespace {

using namespace ombrelay;

constexpr std::array<const char*, 7> kShippedSections = {
    "D4D31", "D4D31_2_05_1_0020", "DB12", "DB12_T_2", "D5120", "D5120_3_01", "D4B60_1_10_5"};
constexpr std::array<const char*, 11> kShippedKeys = {"DFType",
                                                      "MorlinSystemConfigLocation",
                                                      "BatteryVSupported",
                                                      "TS3Supported",
                                                      "NumSamples",
                                                      "PackVoltageReadCommand",
                                                      "TS1readTemperature",
                                                      "TS2readTemperature",
                                                      "TS2Supported",
                                                      "CCOffsetSampleLocation",
                                                      "UseCellScaleDFforCorrection"};
// The sizes a caller may hand the calls, the edges among them: no room, room for the NUL only,
// room for one character, the program's own buffer.
constexpr std::array<std::int32_t, 5> kBufferSizes = {0, 1, 2, 64, 2047};
constexpr std::size_t kMostNamesFromInput = 3;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::ScratchFile config("config.ini");
  config.Write(data, size);

  ResetSharedState();
  sim::VirtualClock clock;
  VirtualPlatform platform(clock);
  g_oPlatform = &platform;

  const fuzz::IniNames fromInput =
      fuzz::NamesInIni({reinterpret_cast<const char*>(data), size}, kMostNamesFromInput);
  std::vector<std::string> sections(kShippedSections.begin(), kShippedSections.end());
  sections.insert(sections.end(), fromInput.sections.begin(), fromInput.sections.end());
  std::vector<std::string> keys(kShippedKeys.begin(), kShippedKeys.end());
  keys.insert(keys.end(), fromInput.keys.begin(), fromInput.keys.end());

  std::string buffer;
  for (std::size_t i = 0; i < sections.size(); ++i) {
    GetPrivateProfileSectionA(sections[i], buffer, kBufferSizes[i % kBufferSizes.size()],
                              config.Path());
    // Each section reads its map anew; the shipped MORLIN map has what every family looks up.
    g_sDataFlashMapPath = std::string(OMBRELAY_SHIPPED_APPDIR) + "/maps/morlin-4D31-2_05.json";
    ReadConfigurationSection(sections[i], config.Path());
  }
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const std::string& section = sections[i % sections.size()];
    GetPrivateProfileIntA(section, keys[i], -1, config.Path());
    GetPrivateProfileStringA(section, keys[i], "default", buffer,
                             kBufferSizes[i % kBufferSizes.size()], config.Path());
  }
  ResetSharedState();
  return 0;
}
