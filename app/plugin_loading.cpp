#include "app/plugin_loading.h"

#include <QDir>
#include <QPluginLoader>

#include "ui/plugin_interface.h"

namespace ombrelay {

PanelPlugin* LoadPanelPlugin(const QString& appDir, QString& error) {
  const QString path = QDir(appDir).filePath("plugins/libombrelay.so");
  QPluginLoader loader(path);
  QObject* instance = loader.instance();
  if (instance == nullptr) {
    error = QStringLiteral("cannot load the plug-in %1: %2").arg(path, loader.errorString());
    return nullptr;
  }
  auto* plugin = qobject_cast<PanelPlugin*>(instance);
  if (plugin == nullptr) {
    error = QStringLiteral("%1 is not an Ombrelay panel plug-in").arg(path);
  }
  return plugin;
}

}  // namespace ombrelay
