#include "tests/support/expected_trace.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "shell/numeric.h"

namespace ombrelay::testing {
namespace {

constexpr int kIncludeDepth = 8;
constexpr std::size_t kContextBefore = 3;
constexpr std::size_t kContextAfter = 6;

std::vector<std::string> ReadLines(const std::string& name) {
  const std::filesystem::path path = std::filesystem::path(OMBRELAY_TRACE_DIR) / (name + ".trace");
  std::ifstream file(path);
  if (!file) throw std::runtime_error("no expected trace " + path.string());
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    const std::string_view text = Trim(line);
    if (!text.empty() && !text.starts_with('#')) lines.emplace_back(text);
  }
  return lines;
}

// Expands lines from at up to the "end" that closes the block, or to the end of the file; at is
// left behind that "end".
std::vector<std::string> Expand(const std::string& name, const std::vector<std::string>& lines,
                                std::size_t& at, int depth) {
  std::vector<std::string> expanded;
  while (at < lines.size()) {
    const std::string& line = lines[at++];
    if (line == "end") return expanded;
    if (line.starts_with("repeat ")) {
      const int times = std::stoi(line.substr(7));
      const std::vector<std::string> body = Expand(name, lines, at, depth);
      for (int i = 0; i < times; ++i)
        expanded.insert(expanded.end(), body.begin(), body.end());
    } else if (line.starts_with("include ")) {
      if (depth >= kIncludeDepth) throw std::runtime_error(name + ": includes nest too deep");
      const std::string included = std::string(Trim(line.substr(8)));
      const std::vector<std::string> more = ReadLines(included);
      std::size_t from = 0;
      const std::vector<std::string> body = Expand(included, more, from, depth + 1);
      expanded.insert(expanded.end(), body.begin(), body.end());
    } else {
      expanded.push_back(line);
    }
  }
  return expanded;
}

void Show(std::ostringstream& out, const char* side, const std::vector<std::string>& lines,
          std::size_t from, std::size_t to) {
  out << side << ":\n";
  for (std::size_t i = from; i < std::min(to, lines.size()); ++i)
    out << "  " << (i + 1) << ": " << lines[i] << "\n";
}

void KeepActual(const std::vector<std::string>& actual, const std::string& name) {
  const std::filesystem::path path = std::filesystem::path("traces-actual") / (name + ".trace");
  std::filesystem::create_directories(path.parent_path());
  std::ofstream file(path);
  for (const std::string& line : actual)
    file << line << "\n";
}

}  // namespace

std::vector<std::string> ExpectedTrace(const std::string& name) {
  const std::vector<std::string> lines = ReadLines(name);
  std::size_t at = 0;
  return Expand(name, lines, at, 0);
}

::testing::AssertionResult MatchesTrace(const std::vector<std::string>& actual,
                                        const std::string& name) {
  return MatchesTrace(actual, name, {});
}

::testing::AssertionResult MatchesTrace(const std::vector<std::string>& actual,
                                        const std::string& name,
                                        const std::map<std::string, std::string>& values) {
  std::vector<std::string> expected = ExpectedTrace(name);
  for (std::string& line : expected) {
    for (const auto& [key, value] : values) {
      const std::string placeholder = "{" + key + "}";
      for (auto at = line.find(placeholder); at != std::string::npos; at = line.find(placeholder))
        line.replace(at, placeholder.size(), value);
    }
  }
  if (actual == expected) return ::testing::AssertionSuccess();

  const auto parting = static_cast<std::size_t>(
      std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end()).first -
      expected.begin());
  const std::size_t from = parting > kContextBefore ? parting - kContextBefore : 0;
  std::ostringstream out;
  out << "trace " << name << " parts at line " << (parting + 1) << " (" << expected.size()
      << " lines expected, " << actual.size() << " recorded)\n";
  Show(out, "expected", expected, from, parting + kContextAfter);
  Show(out, "recorded", actual, from, parting + kContextAfter);
  KeepActual(actual, name);
  out << "the whole recorded trace is in traces-actual/" << name << ".trace";
  return ::testing::AssertionFailure() << out.str();
}

std::string TestNameOf(std::string traceName) {
  std::erase(traceName, '-');
  return traceName;
}

}  // namespace ombrelay::testing
