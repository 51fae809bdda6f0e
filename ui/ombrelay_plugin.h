#pragma once
// The plug-in: one platform for all its panels, and the plug-in's own folder, from which the
// panels find the application directory.

#include <QObject>
#include <QPointer>
#include <vector>

#include "ui/plugin_interface.h"
#include "ui/qt_platform.h"

namespace ombrelay {

class PanelWidget;

class OmbrelayPlugin : public QObject, public PanelPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID OMBRELAY_PANEL_PLUGIN_IID)
  Q_INTERFACES(ombrelay::PanelPlugin)

 public:
  OmbrelayPlugin();
  ~OmbrelayPlugin() override;

  void SetUnattended(bool unattended) override;
  QWidget* CreateCalibrationPanel(Host& host, QWidget* parent) override;
  QWidget* CreateSecurityPanel(Host& host, QWidget* parent) override;
  void OnStartupFinished(QWidget* panel, std::function<void()> callback) override;
  void OnCalibrationReport(QWidget* calibrationPanel,
                           std::function<void(const std::string& json)> callback) override;
  void OnProgress(
      std::function<void(const std::string& doing, int done, int total, float waitSeconds)>
          callback) override;
  ConfiguredCommands CurrentCommands() const override;
  QWidget* ShowCalculator(QWidget* parent) override;
  void BackupDataflash(Host& host, const QString& file) override;
  void CompareDataflash(Host& host, const QString& file, QWidget* parent) override;
  void RestoreDataflash(Host& host, const QString& file) override;

 private:
  // Keeps panel among those that a wait or a timer tick brings up to date.
  QWidget* Keep(PanelWidget* panel);
  void RefreshPanels();

  QtPlatform platform_;
  std::vector<QPointer<PanelWidget>> panels_;
};

}  // namespace ombrelay
