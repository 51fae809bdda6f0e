#pragma once
// The commands of the calibration panel: each starts the panel as a show of it does, lets the
// scan fill the measured boxes, types what the options say and presses the button.

#include <functional>
#include <optional>

#include "cli/options.h"
#include "cli/report.h"
#include "cli/session.h"
#include "report/calibration_report.h"

namespace ombrelay::cli {

void Identify(Session& session, Report& report);
// Each printing goes to emit; with --watch, one every so many seconds.
void Status(Session& session, const Options& options, Report& report,
            const std::function<void(Report&)>& emit);
// Once its button was pressed, record holds the calibration's report.
void Calibrate(Session& session, const Options& options, Report& report,
               std::optional<CalibrationReport>& record);

}  // namespace ombrelay::cli
