#include "cli/report.h"

#include <algorithm>
#include <ostream>

namespace ombrelay::cli {
namespace {

constexpr char kMask = '*';

}  // namespace

void MaskKeys(Report& report) {
  for (ShownValue& value : report.values) {
    const std::size_t count = std::min(value.keyCharacters, value.text.size());
    value.text.replace(0, count, count, kMask);
  }
}

nlohmann::ordered_json ToJson(const Report& report, std::span<const ShownMessage> messages,
                              std::span<const BusOperation> operations) {
  nlohmann::ordered_json json = {{"command", report.command},
                                 {"outcome", report.succeeded ? "succeeded" : "failed"}};
  if (!report.failure.empty()) json["failure"] = report.failure;
  json["values"] = nlohmann::ordered_json::object();
  for (const ShownValue& value : report.values)
    json["values"][value.control] = value.text;
  json["messages"] = nlohmann::ordered_json::array();
  for (const ShownMessage& message : messages) {
    json["messages"].push_back({{"style", message.style == MessageStyle::Error ? "error" : "plain"},
                                {"title", message.title},
                                {"text", message.text}});
  }
  json["writes"] = nlohmann::ordered_json::array();
  for (const BusOperation& operation : operations) {
    if (!operation.op.starts_with("Write")) continue;
    const nlohmann::json logged = ombrelay::ToJson(operation);
    json["writes"].push_back({{"op", logged["op"]},
                              {"command", logged["cmd"]},
                              {"address", logged["address"]},
                              {"data", logged["data"]}});
  }
  return json;
}

void WriteText(const Report& report, std::ostream& out) {
  for (const ShownValue& value : report.values)
    out << value.label << ": " << value.text << '\n';
}

}  // namespace ombrelay::cli
