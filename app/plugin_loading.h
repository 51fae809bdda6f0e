#pragma once

#include <QString>

namespace ombrelay {

class PanelPlugin;

// Loads appDir/plugins/libombrelay.so. Nothing when it cannot be loaded or is no panel plug-in;
// error then says why. The plug-in stays loaded for the rest of the run.
PanelPlugin* LoadPanelPlugin(const QString& appDir, QString& error);

}  // namespace ombrelay
