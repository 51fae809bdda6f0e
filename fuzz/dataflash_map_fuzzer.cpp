// The input is a dataflash map file: loaded through the map library, walked by index, edges
// included, and searched for the parameters of the shipped maps and for those the input names.
// A refused file is fine; a crash, a hang or an escaping exception is a finding.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "config/dataflash_map.h"
#include "config/map_library.h"
#include "fuzz/scratch_file.h"
#include "platforms/virtual_platform.h"
#include "shell/shared_state.h"
#include "sim/clock.h"

namespace {

using namespace ombrelay;

using ParameterName = std::tuple<std::string, std::string, std::string>;

constexpr std::size_t kMostNamesFromInput = 32;

// Class, subclass and parameter names of the loaded map, in index order, up to most of them.
std::vector<ParameterName> NamesInLoadedMap(std::size_t most) {
  std::vector<ParameterName> names;
  for (std::int32_t c = 0; c < GetNumClasses(); ++c) {
    for (std::int32_t s = 0; s < GetNumSubClasses(c); ++s) {
      std::int32_t id = 0;
      const std::string subclass = MapSubclassName(c, s, id);
      for (std::int32_t p = 0; p < GetNumData(c, s); ++p) {
        if (names.size() >= most) return names;
        names.emplace_back(MapClassName(c), subclass, MapParameterName(c, s, p));
      }
    }
  }
  return names;
}

// Every parameter of every shipped map, once.
std::vector<ParameterName> ShippedNames() {
  std::set<ParameterName> names;
  for (const auto& map :
       std::filesystem::directory_iterator(std::string(OMBRELAY_SHIPPED_APPDIR) + "/maps")) {
    if (LoadCfgFile(map.path().string()) != 0) continue;
    for (auto& name : NamesInLoadedMap(SIZE_MAX))
      names.insert(std::move(name));
  }
  UnloadCfgFile();
  return {names.begin(), names.end()};
}

// The library's calls just outside what the map holds, and with buffers too small for a text.
void ProbeEdges() {
  std::array<char, 1> tiny{};
  const std::int32_t classes = GetNumClasses();
  for (const std::int32_t c : {-1, 0, classes - 1, classes}) {
    GetClass(c, {});
    GetClass(c, tiny);
    const std::int32_t subclasses = GetNumSubClasses(c);
    for (const std::int32_t s : {-1, 0, subclasses - 1, subclasses}) {
      std::int32_t id = 0;
      GetNextSubClass(c, s, id, tiny);
      const std::int32_t parameters = GetNumData(c, s);
      for (const std::int32_t p : {-1, 0, parameters - 1, parameters}) {
        GetName(c, s, p, tiny);
        GetOffset(c, s, p);
        GetValue(c, s, p, {});
        GetDefValue(c, s, p, tiny);
        GetDataType(c, s, p, tiny);
        MapParameterType(c, s, p);
      }
    }
  }
}

std::int32_t Find(const ParameterName& name, bool silent) {
  const auto& [sClass, sSubclass, parameter] = name;
  std::int32_t id = 0;
  std::int32_t offset = 0;
  std::string value, defaultValue, type;
  return FindDFParameter(sClass, sSubclass, parameter, id, offset, value, defaultValue, type,
                         silent);
}

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "map library: %s\n", what);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::vector<ParameterName> shipped = ShippedNames();
  static const fuzz::ScratchFile mapFile("map.json");
  mapFile.Write(data, size);

  ResetSharedState();
  sim::VirtualClock clock;
  VirtualPlatform platform(clock);
  g_oPlatform = &platform;

  if (LoadCfgFile(mapFile.Path()) != 0 && GetNumClasses() != 0) {
    Fail("a refused map stayed loaded");
  }
  ProbeEdges();
  // What the walk saw, the search must find.
  for (const auto& name : NamesInLoadedMap(kMostNamesFromInput)) {
    if (Find(name, false) == kParameterNotFound) Fail("a parameter of the map was not found");
  }
  for (const auto& name : shipped)
    Find(name, true);
  UnloadCfgFile();
  ResetSharedState();
  return 0;
}
