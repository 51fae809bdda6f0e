// ombrelay-report-pdf: the calibration reports that ombrelay and the bench write in JSON, as a
// PDF page each.

#include <QGuiApplication>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <vector>

#include "app/report_pdf.h"

namespace {

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

// A file holds one report or a list of them; false, after saying why, when it holds neither.
bool ReadReports(const char* path, std::vector<nlohmann::json>& reports) {
  std::ifstream in(path);
  if (!in) {
    std::cerr << "ombrelay-report-pdf: cannot read " << path << '\n';
    return false;
  }
  const nlohmann::json read = nlohmann::json::parse(in, nullptr, false);
  if (read.is_object()) {
    reports.push_back(read);
  } else if (read.is_array() && !read.empty()) {
    reports.insert(reports.end(), read.begin(), read.end());
  } else {
    std::cerr << "ombrelay-report-pdf: " << path << " holds no calibration report\n";
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char* argv[]) {
  // Fonts need a platform, which a machine without a display has only off screen.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
      qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  if (argc < 3) {
    std::cerr << "usage: ombrelay-report-pdf REPORT.json... OUT.pdf\n";
    return kExitUsage;
  }
  std::vector<nlohmann::json> reports;
  for (int i = 1; i < argc - 1; ++i) {
    if (!ReadReports(argv[i], reports)) return kExitFailure;
  }
  QString error;
  if (!ombrelay::WriteReportPdf(reports, QString::fromLocal8Bit(argv[argc - 1]), error)) {
    std::cerr << "ombrelay-report-pdf: " << error.toStdString() << '\n';
    return kExitFailure;
  }
  return 0;
}
