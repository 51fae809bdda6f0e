#pragma once
// Calibration reports as a PDF a production line files as the pack's certificate: one page a
// calibration, with the gauge, the values entered and measured, every dataflash byte changed,
// the boxes shown and room for a signature. Made with Qt's own PDF writer.

#include <QString>
#include <nlohmann/json.hpp>
#include <vector>

namespace ombrelay {

// Writes one page for each report, as the command line and the bench write them in JSON. False,
// with the reason in error, when a report is not one or the file cannot be written.
bool WriteReportPdf(const std::vector<nlohmann::json>& reports, const QString& file,
                    QString& error);

}  // namespace ombrelay
