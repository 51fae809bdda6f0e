#pragma once

#include <string>

namespace ombrelay {

// The folder of the file that holds this code, without a trailing separator: the plug-in's
// own folder when it is linked into the plug-in. Empty when the loader cannot tell.
std::string ThisModuleFolder();

}  // namespace ombrelay
