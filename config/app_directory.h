#pragma once
// The application directory: the folder above the plug-in's own, where config.ini, the host's
// Quvara.ini, its target files and the dataflash maps lie. Files are named relative to it by
// putting it in front.

#include <string>

namespace ombrelay {

// g_sPluginFolder without its last 7 characters, the "plugins" folder name, so it ends in the
// separator; empty when the folder name is shorter.
std::string ApplicationDirectory();

}  // namespace ombrelay
