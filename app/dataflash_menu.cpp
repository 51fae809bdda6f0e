#include "app/dataflash_menu.h"

#include <QFileDialog>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>

#include "ui/plugin_interface.h"

namespace ombrelay {
namespace {

constexpr const char* kBackups = "Dataflash backups (*.json);;All files (*)";

QString OpenBackup(QMainWindow& window, const QString& caption) {
  return QFileDialog::getOpenFileName(&window, caption, QString(), kBackups);
}

}  // namespace

void AddDataflashMenu(QMainWindow& window, PanelPlugin& plugin, Host& host) {
  QMenu* menu = window.menuBar()->addMenu("&Dataflash");
  menu->addAction("&Backup…", &window, [&window, &plugin, &host] {
    const QString file = QFileDialog::getSaveFileName(&window, "Back up the dataflash into",
                                                      "dataflash-backup.json", kBackups);
    if (!file.isEmpty()) plugin.BackupDataflash(host, file);
  });
  menu->addAction("&Compare with gauge…", &window, [&window, &plugin, &host] {
    const QString file = OpenBackup(window, "Compare the gauge with the backup");
    if (!file.isEmpty()) plugin.CompareDataflash(host, file, &window);
  });
  menu->addAction("&Restore…", &window, [&window, &plugin, &host] {
    const QString file = OpenBackup(window, "Restore the backup");
    if (file.isEmpty()) return;
    const auto answer = QMessageBox::question(
        &window, "Dataflash restore",
        "Write the rows of " + file + " that differ into the gauge on the bus?");
    if (answer == QMessageBox::Yes) plugin.RestoreDataflash(host, file);
  });
}

}  // namespace ombrelay
