#pragma once
// What the plug-in offers the application that loads it. The application owns the bus and is
// the panels' container: every bus call of a panel goes to the host it was made with.

#include <QString>
#include <QtPlugin>
#include <functional>
#include <string>

#include "shell/configured_commands.h"

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

  // Calls back with the report of each calibration that the calibration panel's buttons run, as
  // JSON: the gauge, what was entered and shown, the boxes and the dataflash bytes changed.
  virtual void OnCalibrationReport(QWidget* calibrationPanel,
                                   std::function<void(const std::string& json)> callback) = 0;

  // Calls back as a long procedure of the panels goes on, so that the application can show it:
  // what it does, done of total steps (total 0: no count) and the seconds of the pumping wait it
  // is in (0: none); all empty and 0 once nothing goes on.
  virtual void OnProgress(
      std::function<void(const std::string& doing, int done, int total, float waitSeconds)>
          callback) = 0;

  // The commands config.ini has given the panels, as they stand now. The plug-in keeps its
  // shared state to itself: the bench names the traffic of its bus log by these.
  virtual ConfiguredCommands CurrentCommands() const = 0;

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

#define OMBRELAY_PANEL_PLUGIN_IID "org.ombrelay.PanelPlugin/3.0"
Q_DECLARE_INTERFACE(ombrelay::PanelPlugin, OMBRELAY_PANEL_PLUGIN_IID)
