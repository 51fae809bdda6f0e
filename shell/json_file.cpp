#include "shell/json_file.h"

#include <cstdint>
#include <filesystem>
#include <fstream>

namespace ombrelay {
namespace {

using nlohmann::json;

// Real maps are a few hundred kilobytes with some thousand parameters, and a backup of the
// whole dataflash is smaller still.
constexpr std::uintmax_t kMaxFileBytes = 16U * 1024U * 1024U;
// The files nest seven levels deep at most; the rest is room for members that we do not read.
constexpr int kMaxDepth = 16;
constexpr int kMaxJsonValues = 1'000'000;

std::string ReadText(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) throw JsonRefused("not a file");
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error) throw JsonRefused("cannot be read");
  if (size > kMaxFileBytes) {
    throw JsonRefused("larger than " + std::to_string(kMaxFileBytes >> 20) + " MiB");
  }
  std::string text(size, '\0');
  std::ifstream file(path, std::ios::binary);
  if (!file.read(text.data(), static_cast<std::streamsize>(size))) {
    throw JsonRefused("cannot be read");
  }
  return text;
}

}  // namespace

json ReadJsonFile(const std::string& path) {
  const std::string text = ReadText(path);
  int values = 0;
  const auto bounded = [&values](int depth, json::parse_event_t event, json&) {
    if (event == json::parse_event_t::object_start || event == json::parse_event_t::array_start ||
        event == json::parse_event_t::value) {
      if (depth > kMaxDepth) {
        throw JsonRefused("nested deeper than " + std::to_string(kMaxDepth) + " levels");
      }
      if (++values > kMaxJsonValues) {
        throw JsonRefused("more than " + std::to_string(kMaxJsonValues) + " values");
      }
    }
    return true;
  };
  json root = json::parse(text, bounded, /*allow_exceptions=*/false);
  if (root.is_discarded()) throw JsonRefused("not JSON");
  return root;
}

}  // namespace ombrelay
