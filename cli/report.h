#pragma once
// What a command tells its user: whether it succeeded, the values the panel showed, and, in
// JSON, the boxes it showed and the bytes it wrote on the bus.

#include <iosfwd>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <vector>

#include "cli/message_log_platform.h"
#include "hosts/bus_operation.h"

namespace ombrelay::cli {

struct ShownValue {
  std::string control;  // the control's name, "txtCalMeasVoltage(0)"; the key in JSON
  std::string label;    // what the user reads beside it, with its unit
  std::string text;
  // How many characters at the front are a key: none, some (a box that shows a key followed
  // by a challenge) or all (kWholeText, a key box).
  std::size_t keyCharacters = 0;
};

inline constexpr std::size_t kWholeText = std::string::npos;

struct Report {
  std::string command;
  bool succeeded = false;
  // Why the command did not get as far as its button, in the program's own words; empty when
  // the panel's boxes say it.
  std::string failure;
  std::vector<ShownValue> values;

  void Add(std::string control, std::string label, std::string text,
           std::size_t keyCharacters = 0) {
    values.push_back({std::move(control), std::move(label), std::move(text), keyCharacters});
  }
  // Ends the command short of its button.
  void Fail(std::string why) {
    succeeded = false;
    failure = std::move(why);
  }
};

// Hides the keys among the values behind "*".
void MaskKeys(Report& report);

// One JSON object: command, outcome, failure when there is one, values by control, the messages
// shown and the write operations on the bus.
nlohmann::ordered_json ToJson(const Report& report, std::span<const ShownMessage> messages,
                              std::span<const BusOperation> operations);

// "label: text", a line each.
void WriteText(const Report& report, std::ostream& out);

}  // namespace ombrelay::cli
