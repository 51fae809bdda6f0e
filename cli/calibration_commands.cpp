#include "cli/calibration_commands.h"

#include "cli/panel_input.h"
#include "panel/nbcal.h"
#include "panel/run_event.h"
#include "report/calibration_recording.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay::cli {
namespace {

// The panel as a show of it leaves it; false, with the panel's boxes said, when start-up ended
// in a box.
bool StartUp(NBCal& panel, Session& session) {
  const std::size_t before = session.Messages().size();
  RunEvent([&] { panel.UserControl_Show(); });
  return session.Messages().size() == before;
}

// Continuous updates on and one tick of the scan, so that the measured boxes show the gauge now.
void Scan(NBCal& panel) {
  panel.chkUpdates.Value = 1;
  RunEvent([&] { panel.tmrScan_Timer(); });
}

// The grid's rows below its heading, name and value; group headings carry no value.
void AddGrid(Report& report, const Grid& grid, const char* name, const char* label) {
  if (!grid.Visible) return;
  for (int row = grid.FixedRows; row < grid.Rows(); ++row) {
    const std::string parameter = grid.Cell(row, 0).Text;
    const std::string value = grid.Cell(row, 1).Text;
    if (parameter.empty() || value == "----") continue;
    report.Add(std::string(name) + ": " + parameter, std::string(label) + ": " + parameter, value);
  }
}

// What the scan shows, the rows of this gauge only.
void AddMeasured(Report& report, const NBCal& panel) {
  for (ReportedValue& value : MeasuredValues(panel))
    report.Add(std::move(value.control), std::move(value.label), std::move(value.text));
}

// Types the voltage and temperature page's entries; false, with why, when the options do not
// fit the page of this gauge.
bool EnterVoltagesAndTemperatures(NBCal& panel, const Options& options, Report& report) {
  if (!options.cells.empty()) {
    std::size_t open = 0;
    for (const TextBox& box : panel.txtVoltage)
      open += box.Visible && box.Enabled ? 1 : 0;
    if (options.cells.size() != open) {
      report.Fail("this gauge's page takes " + std::to_string(open) +
                  " stack voltages, --cells gives " + std::to_string(options.cells.size()));
      return false;
    }
    for (std::size_t row = 0; row < open; ++row) {
      if (!Type(panel.txtVoltage[row], options.cells[row])) return false;
    }
    const bool batteryRow = panel.txtBatVoltageActual.Visible && panel.txtBatVoltageActual.Enabled;
    if (batteryRow && !options.battery) {
      report.Fail("this gauge's page takes the battery voltage too: give --battery");
      return false;
    }
    if (options.battery) {
      if (!Type(panel.txtBatVoltageActual, *options.battery)) {
        report.Fail("this gauge's page has no battery voltage row");
        return false;
      }
    }
    if (!Tick(panel.chkVoltageCal)) {
      report.Fail("the voltage calibration cannot be ticked");
      return false;
    }
  } else if (options.battery) {
    report.Fail("--battery goes with --cells");
    return false;
  }
  for (const auto& [row, celsius] : options.temperatures) {
    const auto index = static_cast<std::size_t>(row);
    if (!Type(panel.txtActualTemp[index], celsius) || !Tick(panel.chkTemp[index])) {
      report.Fail("this gauge's page has no row for sensor " + std::to_string(row) + " (" +
                  panel.chkTemp[index].Caption + ")");
      return false;
    }
  }
  return true;
}

CalibrationKind KindOf(Command command) {
  switch (command) {
    case Command::CalibratePack:
      return CalibrationKind::PackVoltage;
    case Command::CalibrateCurrent:
      return CalibrationKind::Current;
    case Command::CalibrateCcOffset:
      return CalibrationKind::CcOffset;
    case Command::CalibrateBoardOffset:
      return CalibrationKind::BoardOffset;
    default:
      return CalibrationKind::VoltageTemperature;
  }
}

// Types what the command brings into the page its button stands on.
bool Enter(NBCal& panel, const Options& options, Report& report) {
  switch (options.command) {
    case Command::CalibrateVoltageTemperature:
      return EnterVoltagesAndTemperatures(panel, options, report);
    case Command::CalibratePack:
      if (!panel.frmPackCal.Visible || !Type(panel.txtPackActualVoltage, options.entered)) {
        report.Fail("this gauge's page has no pack voltage calibration");
        return false;
      }
      return true;
    case Command::CalibrateCurrent:
      SelectTab(panel.SStabCal, 1, [&](std::int16_t previous) { panel.SStabCal_Click(previous); });
      if (!Type(panel.txtActualCurrent, options.entered)) {
        report.Fail("the current box does not take typing");
        return false;
      }
      return true;
    default:
      SelectTab(panel.SStabCal, 1, [&](std::int16_t previous) { panel.SStabCal_Click(previous); });
      return true;
  }
}

}  // namespace

void Identify(Session& session, Report& report) {
  NBCal panel(session.GetHost(), session.GetPlatform());
  report.succeeded = StartUp(panel, session);
  report.Add("device", "Device", g_sDeviceNumber);
  report.Add("firmware", "Firmware version", g_sFirmwareVersion);
  report.Add("firmware_type", "Firmware type", g_sFirmwareType);
  report.Add("build", "Build", g_sBuildNumber);
  // The family is known only once the configuration has loaded.
  report.Add("family", "Family", report.succeeded ? std::string(FamilyName(g_iDFType)) : "");
  report.Add("dataflash_map", "Dataflash map", g_sDataFlashMapPath);
  report.Add("txtCellCount", "Cells", panel.txtCellCount.Text);
  report.Add("txtVersion", "Panel", panel.txtVersion.Caption);
}

void Status(Session& session, const Options& options, Report& report,
            const std::function<void(Report&)>& emit) {
  NBCal panel(session.GetHost(), session.GetPlatform());
  const bool started = StartUp(panel, session);
  for (int printed = 0;;) {
    const std::size_t before = session.Messages().size();
    Scan(panel);
    report.values.clear();
    report.succeeded = started && session.Messages().size() == before;
    AddMeasured(report, panel);
    AddGrid(report, panel.displaygrid, "displaygrid", "Gauge");
    AddGrid(report, panel.DFGrid, "DFGrid", "Dataflash");
    if (!options.watchSeconds || (options.count && ++printed >= *options.count)) return;
    emit(report);
    DelaySeconds(static_cast<float>(*options.watchSeconds));
  }
}

void Calibrate(Session& session, const Options& options, Report& report,
               std::optional<CalibrationReport>& record) {
  NBCal panel(session.GetHost(), session.GetPlatform());
  if (!StartUp(panel, session)) return;
  Scan(panel);
  if (!Enter(panel, options, report)) return;
  const CalibrationKind kind = KindOf(options.command);
  for (ReportedValue& value : EnteredValues(panel, kind))
    report.Add(std::move(value.control), std::move(value.label), std::move(value.text));
  const CalibrationButton& calibration = ButtonOf(kind);
  CalibrationRecorder recorder(session.Operations(), session.Messages());
  recorder.Pressing(panel, kind);
  const std::size_t before = session.Messages().size();
  if (!Press(panel.*calibration.button, [&] { (panel.*calibration.click)(); })) {
    report.Fail("the calibration button is not enabled");
    return;
  }
  const Picture& mark = panel.*calibration.mark;
  report.succeeded = mark.Visible && session.Messages().size() == before;
  report.Add(calibration.markName, "Done-mark", MarkText(mark));
  record = recorder.Pressed(panel);
  // The report's values after are those of the scan that follows, as the run prints them.
  Scan(panel);
  record->shownAfter = MeasuredValues(panel);
  AddMeasured(report, panel);
}

}  // namespace ombrelay::cli
