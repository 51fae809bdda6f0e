#pragma once
// The bench's dataflash actions on the gauge on host: a backup into a file, a comparison of a
// backup with the gauge, a restore. Each tells its outcome through platform's boxes, or in a
// dialog over parent for a comparison that found differences. None starts while a panel's
// handler is under way: its waits let the menus in, and two conversations with the gauge at once
// would garble both.

#include <QString>

#include "shell/host.h"
#include "shell/platform.h"

class QWidget;

namespace ombrelay {

void BackupDataflash(Host& host, Platform& platform, const QString& file);
void CompareDataflash(Host& host, Platform& platform, const QString& file, QWidget* parent);
void RestoreDataflash(Host& host, Platform& platform, const QString& file);

}  // namespace ombrelay
