#pragma once
// The reports of the calibrations run on the bench since it started, kept until saved: as a JSON
// list, and beside it, of the same name ending in .pdf, a page for each.

#include <QString>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace ombrelay {

class CalibrationReports {
 public:
  void Add(const std::string& json) { reports_.push_back(nlohmann::json::parse(json)); }
  bool Empty() const { return reports_.empty(); }
  std::size_t Count() const { return reports_.size(); }
  // Writes jsonFile and its PDF; false, with the reason in error, when either cannot be written.
  bool Save(const QString& jsonFile, QString& error) const;
  // The PDF that goes with jsonFile.
  static QString PdfBeside(const QString& jsonFile);

 private:
  std::vector<nlohmann::json> reports_;
};

}  // namespace ombrelay
