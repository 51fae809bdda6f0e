#include "ui/plugin_folder.h"

#include <dlfcn.h>

#include <QFileInfo>

namespace ombrelay {

std::string ThisModuleFolder() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&ThisModuleFolder), &info) == 0 || info.dli_fname == nullptr) {
    return {};
  }
  return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absolutePath().toStdString();
}

}  // namespace ombrelay
