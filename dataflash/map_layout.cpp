#include "dataflash/map_layout.h"

#include <set>
#include <tuple>

#include "config/dataflash_map.h"
#include "config/map_library.h"
#include "gauge/value_conversion.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

// Reads the loaded map; false, with why, at the first parameter that cannot be backed up.
bool WalkMap(std::vector<BackupParameter>& parameters, std::string& failure) {
  std::set<std::tuple<std::string, std::string, std::string>> seen;
  for (std::int32_t c = 0; c < GetNumClasses(); ++c) {
    const std::string className = MapClassName(c);
    for (std::int32_t s = 0; s < GetNumSubClasses(c); ++s) {
      std::int32_t id = 0;
      const std::string subclassName = MapSubclassName(c, s, id);
      for (std::int32_t p = 0; p < GetNumData(c, s); ++p) {
        BackupParameter parameter{className,
                                  subclassName,
                                  MapParameterName(c, s, p),
                                  id + GetOffset(c, s, p),
                                  MapParameterType(c, s, p),
                                  {},
                                  {}};
        if (!seen.insert({className, subclassName, parameter.name}).second) continue;
        const auto size = DataflashValueSize(parameter.type);
        if (!size) {
          failure = "the dataflash map gives " + ParameterName(parameter) + " the type \"" +
                    parameter.type + "\", whose size is not known";
          return false;
        }
        if (parameter.address + static_cast<std::int32_t>(*size) > kDataflashAddresses) {
          failure = "the dataflash map places " + ParameterName(parameter) + " at " +
                    std::to_string(parameter.address) + ", past the last address " +
                    std::to_string(kDataflashAddresses - 1);
          return false;
        }
        parameters.push_back(std::move(parameter));
      }
    }
  }
  return true;
}

}  // namespace

bool ReadMapLayout(std::vector<BackupParameter>& parameters, std::string& failure) {
  parameters.clear();
  if (LoadCfgFile(g_sDataFlashMapPath) != 0) {
    failure = "the dataflash map " + g_sDataFlashMapPath + " does not load: " + MapLoadError();
    return false;
  }
  const bool walked = WalkMap(parameters, failure);
  UnloadCfgFile();
  return walked;
}

}  // namespace ombrelay
