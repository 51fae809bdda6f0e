// What the PDF writer and the bench's kept reports say when there is nothing to write, or a report
// that is none; nothing is written then.

#include "app/report_pdf.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "app/calibration_reports.h"

namespace ombrelay {
namespace {

TEST(ReportPdf, RefusesNothingAndWhatIsNoReportWithoutWriting) {
  const QString file = QDir::temp().filePath("ombrelay-report-pdf-test.pdf");
  QFile::remove(file);
  QString error;
  EXPECT_FALSE(WriteReportPdf({}, file, error));
  EXPECT_EQ(error, "No calibration report to write.");

  const nlohmann::json noGauge = {{"calibration", "Pack voltage calibration"}, {"done", true}};
  EXPECT_FALSE(WriteReportPdf({noGauge}, file, error));
  EXPECT_TRUE(error.startsWith("Report 1 is not a calibration report: ")) << error.toStdString();
  EXPECT_FALSE(QFile::exists(file));

  const CalibrationReports none;
  EXPECT_FALSE(none.Save(QDir::temp().filePath("ombrelay-reports-test.json"), error));
  EXPECT_EQ(error, "No calibration has run yet.");
  EXPECT_EQ(CalibrationReports::PdfBeside("/tmp/line 4/pack.json"), "/tmp/line 4/pack.pdf");
}

}  // namespace
}  // namespace ombrelay
