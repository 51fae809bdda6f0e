#include "config/app_directory.h"

#include <string_view>

#include "shell/shared_state.h"

namespace ombrelay {

std::string ApplicationDirectory() {
  constexpr std::string_view kPluginFolderName = "plugins";
  if (g_sPluginFolder.size() < kPluginFolderName.size()) return {};
  return g_sPluginFolder.substr(0, g_sPluginFolder.size() - kPluginFolderName.size());
}

}  // namespace ombrelay
