#pragma once
// The bench's Dataflash menu: back up the gauge on the bus into a file, compare a backup with
// it, restore one. The menu picks the files and asks before a restore; the plug-in does the
// work and tells the outcome.

class QMainWindow;

namespace ombrelay {

class Host;
class PanelPlugin;

void AddDataflashMenu(QMainWindow& window, PanelPlugin& plugin, Host& host);

}  // namespace ombrelay
