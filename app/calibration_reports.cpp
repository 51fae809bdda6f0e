#include "app/calibration_reports.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "app/report_pdf.h"

namespace ombrelay {

QString CalibrationReports::PdfBeside(const QString& jsonFile) {
  const QFileInfo file(jsonFile);
  return file.dir().filePath(file.completeBaseName() + ".pdf");
}

bool CalibrationReports::Save(const QString& jsonFile, QString& error) const {
  if (reports_.empty()) {
    error = "No calibration has run yet.";
    return false;
  }
  QFile out(jsonFile);
  const std::string json = nlohmann::json(reports_).dump(2) + "\n";
  if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
      out.write(json.data(), static_cast<qint64>(json.size())) !=
          static_cast<qint64>(json.size())) {
    error = QStringLiteral("Cannot write %1: %2").arg(jsonFile, out.errorString());
    return false;
  }
  return WriteReportPdf(reports_, PdfBeside(jsonFile), error);
}

}  // namespace ombrelay
