#include "cli/report.h"

#include <ostream>

namespace ombrelay::cli {
namespace {

constexpr char kMask = '*';

void MaskEvery(std::string& text, const std::string& secret) {
  if (secret.empty()) return;
  for (auto at = text.find(secret); at != std::string::npos; at = text.find(secret, at))
    text.replace(at, secret.size(), secret.size(), kMask);
}

}  // namespace

void MaskKeys(Report& report, const std::string& key) {
  for (ShownValue& value : report.values) {
    if (value.key) {
      value.text.assign(value.text.size(), kMask);
    } else {
      MaskEvery(value.text, key);
    }
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
