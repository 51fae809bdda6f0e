#include "ui/ombrelay_plugin.h"

#include <iostream>

#include "shell/shared_state.h"
#include "ui/calibration_panel.h"
#include "ui/dataflash_actions.h"
#include "ui/plugin_folder.h"
#include "ui/security_panel.h"
#include "ui/sha1_calc_dialog.h"

namespace ombrelay {

OmbrelayPlugin::OmbrelayPlugin() : platform_(std::cerr) {
  g_sPluginFolder = ThisModuleFolder();
  // Handlers may show boxes before any panel has been shown.
  g_oPlatform = &platform_;
  platform_.SetRefreshHook([this] { RefreshPanels(); });
}

OmbrelayPlugin::~OmbrelayPlugin() {
  if (g_oPlatform == &platform_) g_oPlatform = nullptr;
}

void OmbrelayPlugin::SetUnattended(bool unattended) {
  platform_.SetUnattended(unattended);
}

QWidget* OmbrelayPlugin::CreateCalibrationPanel(Host& host, QWidget* parent) {
  return Keep(new CalibrationPanel(host, platform_, parent));
}

QWidget* OmbrelayPlugin::CreateSecurityPanel(Host& host, QWidget* parent) {
  return Keep(new SecurityPanel(host, platform_, parent));
}

void OmbrelayPlugin::OnStartupFinished(QWidget* panel, std::function<void()> callback) {
  auto* ours = qobject_cast<PanelWidget*>(panel);
  if (ours == nullptr) return;
  connect(ours, &PanelWidget::startupFinished, ours, std::move(callback));
}

void OmbrelayPlugin::OnCalibrationReport(QWidget* calibrationPanel,
                                         std::function<void(const std::string& json)> callback) {
  auto* ours = qobject_cast<CalibrationPanel*>(calibrationPanel);
  if (ours == nullptr) return;
  ours->OnCalibrationReport([callback = std::move(callback)](const CalibrationReport& report) {
    callback(ToJson(report).dump());
  });
}

void OmbrelayPlugin::OnProgress(
    std::function<void(const std::string& doing, int done, int total, float waitSeconds)>
        callback) {
  platform_.SetProgressHook([callback = std::move(callback)](const QtPlatform::ProgressState& now) {
    callback(now.doing, now.done, now.total, now.waitSeconds);
  });
}

ConfiguredCommands OmbrelayPlugin::CurrentCommands() const {
  return CurrentConfiguredCommands();
}

QWidget* OmbrelayPlugin::ShowCalculator(QWidget* parent) {
  auto* calculator = new Sha1CalcDialog(parent);
  calculator->setAttribute(Qt::WA_DeleteOnClose);
  calculator->show();
  return calculator;
}

void OmbrelayPlugin::BackupDataflash(Host& host, const QString& file) {
  ombrelay::BackupDataflash(host, platform_, file);
}

void OmbrelayPlugin::CompareDataflash(Host& host, const QString& file, QWidget* parent) {
  ombrelay::CompareDataflash(host, platform_, file, parent);
}

void OmbrelayPlugin::RestoreDataflash(Host& host, const QString& file) {
  ombrelay::RestoreDataflash(host, platform_, file);
}

QWidget* OmbrelayPlugin::Keep(PanelWidget* panel) {
  std::erase_if(panels_, [](const QPointer<PanelWidget>& known) { return known.isNull(); });
  panels_.emplace_back(panel);
  return panel;
}

void OmbrelayPlugin::RefreshPanels() {
  for (const auto& panel : panels_) {
    if (panel) panel->Refresh();
  }
}

}  // namespace ombrelay
