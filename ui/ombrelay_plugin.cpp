#include "ui/ombrelay_plugin.h"

#include <iostream>

#include "shell/shared_state.h"
#include "ui/calibration_panel.h"
#include "ui/plugin_folder.h"

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
  auto* panel = new CalibrationPanel(host, platform_, parent);
  std::erase_if(panels_, [](const QPointer<CalibrationPanel>& known) { return known.isNull(); });
  panels_.emplace_back(panel);
  return panel;
}

void OmbrelayPlugin::OnStartupFinished(QWidget* panel, std::function<void()> callback) {
  auto* calibration = qobject_cast<CalibrationPanel*>(panel);
  if (calibration == nullptr) return;
  connect(calibration, &CalibrationPanel::startupFinished, calibration, std::move(callback));
}

void OmbrelayPlugin::RefreshPanels() {
  for (const auto& panel : panels_) {
    if (panel) panel->Refresh();
  }
}

}  // namespace ombrelay
