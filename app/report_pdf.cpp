#include "app/report_pdf.h"

#include <QAbstractTextDocumentLayout>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>
#include <algorithm>

namespace ombrelay {
namespace {

using Json = nlohmann::json;

constexpr int kResolution = 300;
constexpr double kMarginMm = 15;

QString Escaped(const std::string& text) {
  return QString::fromStdString(text).toHtmlEscaped();
}

// A text field of the report, or empty; a number is shown as it stands.
std::string Text(const Json& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end() || found->is_null()) return {};
  return found->is_string() ? found->get<std::string>() : found->dump();
}

QString Row(std::initializer_list<QString> cells, const char* style = "") {
  QString row = QStringLiteral("<tr style=\"%1\">").arg(QLatin1String(style));
  for (const QString& cell : cells)
    row += "<td>" + cell + "</td>";
  return row + "</tr>";
}

QString Table(const QStringList& headings, const QString& rows) {
  QString html = "<table border=\"1\" cellspacing=\"0\" cellpadding=\"3\" width=\"100%\"><tr>";
  for (const QString& heading : headings)
    html += "<th align=\"left\">" + heading + "</th>";
  return html + "</tr>" + rows + "</table>";
}

QString GaugeTable(const Json& report) {
  const Json& gauge = report.at("gauge");
  const Json& configuration = report.at("configuration");
  QStringList sections;
  for (const Json& section : configuration.at("sections"))
    sections << Escaped(section.get<std::string>());
  QString rows;
  const auto add = [&](const char* label, const QString& value) { rows += Row({label, value}); };
  add("Device", Escaped(Text(gauge, "device")));
  add("Firmware", Escaped(Text(gauge, "firmware") + ", type " + Text(gauge, "firmware_type") +
                          ", build " + Text(gauge, "build")));
  add("Gauge address", Escaped(Text(gauge, "address")));
  add("Family", Escaped(Text(configuration, "family")));
  add("Configuration sections", sections.join(", "));
  add("Dataflash map", Escaped(Text(configuration, "dataflash_map")));
  add("Time", Escaped(Text(report, "time")));
  return Table({"Gauge", ""}, rows);
}

QString EnteredTable(const Json& report) {
  QString rows;
  for (const Json& value : report.at("entered"))
    rows += Row({Escaped(Text(value, "label")), Escaped(Text(value, "text"))});
  return rows.isEmpty() ? QString("<p>Nothing entered.</p>") : Table({"Entered", ""}, rows);
}

QString MeasuredTable(const Json& report) {
  const Json& after = report.at("shown_after");
  QString rows;
  for (const Json& before : report.at("shown_before")) {
    const std::string control = Text(before, "control");
    const auto same = std::find_if(after.begin(), after.end(), [&](const Json& value) {
      return Text(value, "control") == control;
    });
    rows += Row({Escaped(Text(before, "label")), Escaped(Text(before, "text")),
                 same == after.end() ? QString() : Escaped(Text(*same, "text"))});
  }
  return Table({"Measured", "Before", "After"}, rows);
}

QString ChangesTable(const Json& report) {
  QString rows;
  for (const Json& change : report.at("dataflash_changes")) {
    const std::string readBack = Text(change, "read_back");
    const bool kept = readBack == Text(change, "written");
    rows += Row(
        {Escaped(Text(change, "parameter")), Escaped(Text(change, "area")),
         Escaped(Text(change, "address")), Escaped(Text(change, "old")),
         Escaped(Text(change, "written")), Escaped(readBack.empty() ? "not read back" : readBack)},
        kept ? "" : "color:#b00000");
  }
  if (rows.isEmpty()) return "<p>No dataflash byte changed.</p>";
  return Table({"Parameter", "Area", "Address", "Old", "Written", "Read back"}, rows);
}

QString MessagesList(const Json& report) {
  const Json& messages = report.at("messages");
  if (messages.empty()) return "<p>No message box was shown.</p>";
  QString list = "<ul>";
  for (const Json& message : messages)
    list += "<li>" + Escaped(Text(message, "style") + ": " + Text(message, "text")) + "</li>";
  return list + "</ul>";
}

QString PageHtml(const Json& report) {
  const bool done = report.at("done").get<bool>();
  return "<p>Ombrelay calibration report</p><h2>" + Escaped(Text(report, "calibration")) +
         "</h2><p><b>" + (done ? "Done" : "Not done: the done-mark did not show") + "</b></p>" +
         GaugeTable(report) + "<p></p>" + EnteredTable(report) + "<p></p>" + MeasuredTable(report) +
         "<h3>Dataflash bytes changed</h3>" + ChangesTable(report) + "<h3>Messages</h3>" +
         MessagesList(report) +
         "<p></p><p></p><table width=\"100%\" cellpadding=\"12\"><tr>"
         "<td>Calibrated by: ____________________</td><td>Date: ____________</td>"
         "<td>Signature: ____________________</td></tr></table>";
}

// Draws the page's HTML from the top of the page, shrunk to fit when it is longer than the page.
void DrawPage(QPainter& painter, const QString& html, const QSizeF& page) {
  QTextDocument document;
  document.documentLayout()->setPaintDevice(painter.device());
  document.setDocumentMargin(0);
  document.setHtml(html);
  document.setTextWidth(page.width());
  const double scale = std::min(1.0, page.height() / document.size().height());
  painter.save();
  painter.scale(scale, scale);
  document.drawContents(&painter);
  painter.restore();
}

}  // namespace

bool WriteReportPdf(const std::vector<Json>& reports, const QString& file, QString& error) {
  if (reports.empty()) {
    error = "No calibration report to write.";
    return false;
  }
  std::vector<QString> pages;
  for (std::size_t i = 0; i < reports.size(); ++i) {
    try {
      pages.push_back(PageHtml(reports[i]));
    } catch (const Json::exception& bad) {
      error = QStringLiteral("Report %1 is not a calibration report: %2")
                  .arg(i + 1)
                  .arg(QString::fromUtf8(bad.what()));
      return false;
    }
  }
  QPdfWriter writer(file);
  writer.setResolution(kResolution);
  writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                   QMarginsF(kMarginMm, kMarginMm, kMarginMm, kMarginMm),
                                   QPageLayout::Millimeter));
  writer.setTitle("Calibration report");
  writer.setCreator("Ombrelay");
  QPainter painter;
  if (!painter.begin(&writer)) {
    error = "Cannot write " + file + ".";
    return false;
  }
  const QSizeF page = writer.pageLayout().paintRectPixels(kResolution).size();
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (i > 0) writer.newPage();
    DrawPage(painter, pages[i], page);
  }
  return painter.end();
}

}  // namespace ombrelay
