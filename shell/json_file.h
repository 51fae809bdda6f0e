#pragma once
// JSON files that come from outside the program (dataflash maps, backups): read with bounds on
// size, nesting and the number of values, checked as the parser goes, so that a hostile file is
// refused before it is built.

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace ombrelay {

// Why a file is refused: "not a file", "cannot be read", "larger than 16 MiB", "not JSON",
// "nested deeper than 16 levels", "more than 1000000 values".
class JsonRefused : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The document in the file at path; throws JsonRefused.
nlohmann::json ReadJsonFile(const std::string& path);

}  // namespace ombrelay
