#pragma once
// What the plug-in offers the application that loads it. The application owns the bus and is
// the panels' container: every bus call of a panel goes to the host it was made with.

#include <QString>
#include <QtPlugin>
#include <functional>

class QWidget;

namespace ombrelay {

class Host;

class PanelPlugin {
 public:
  virtual ~PanelPlugin() = default;

  // For runs without a user: every message box is answered at once and written to standard
  // error as one line, "message: plain: TEXT" or "message: error: TEXT".
  virtual void SetUnattended(bool unattended) = 0;

  // The calibration panel, a child of parent. Its start-up runs against host each time the
  // panel is shown.
  virtual QWidget* CreateCalibrationPanel(Host& host, QWidget* parent) = 0;

  // The security panel, a child of parent, likewise.
  virtual QWidget* CreateSecurityPanel(Host& host, QWidget* parent) = 0;

  // Calls back each time a start-up of panel, made by either Create call, has finished.
  virtual void OnStartupFinished(QWidget* panel, std::function<void()> callback) = 0;

  // Opens the SHA-1 calculator, a window of its own over parent that needs no gauge, and gives
  // it back. It deletes itself when closed.
  virtual QWidget* ShowCalculator(QWidget* parent) = 0;

  // The dataflash of the gauge on host, a MORLIN or KELD_PLUS: backed up into file, compared
  // with the backup in file, restored from it. Each identifies the gauge afresh and tells its
  // outcome in a box, or in a dialog over parent for a comparison that found differences.
  virtual void BackupDataflash(Host& host, const QString& file) = 0;
  virtual void CompareDataflash(Host& host, const QString& file, QWidget* parent) = 0;
  virtual void RestoreDataflash(Host& host, const QString& file) = 0;
};

}  // namespace ombrelay

#define OMBRELAY_PANEL_PLUGIN_IID "org.ombrelay.PanelPlugin/2.1"
Q_DECLARE_INTERFACE(ombrelay::PanelPlugin, OMBRELAY_PANEL_PLUGIN_IID)
