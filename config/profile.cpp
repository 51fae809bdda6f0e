#include "config/profile.h"

#include <ini.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "shell/numeric.h"

namespace ombrelay {
namespace {

// Values may be 2046 characters long; the longest line we take in is far beyond that.
constexpr int kMaxLineLength = 1 << 20;

char commentPrefixes[] = ";";

// The Debian build of the parser takes its options from globals, and its defaults cut lines at
// 200 characters, join an indented line to the key above it, end a value at ';' and take '#'
// for a comment. These options give the profile format instead, for the length of one parse.
class ProfileFormatOptions {
 public:
  ProfileFormatOptions() {
    ini_use_stack = false;
    ini_allow_realloc = true;
    ini_max_line = kMaxLineLength;
    ini_allow_multiline = false;
    ini_allow_inline_comments = false;
    ini_start_comment_prefixes = commentPrefixes;
  }
  ~ProfileFormatOptions() {
    ini_use_stack = useStack_;
    ini_allow_realloc = allowRealloc_;
    ini_max_line = maxLine_;
    ini_allow_multiline = allowMultiline_;
    ini_allow_inline_comments = allowInlineComments_;
    ini_start_comment_prefixes = startCommentPrefixes_;
  }
  ProfileFormatOptions(const ProfileFormatOptions&) = delete;
  ProfileFormatOptions& operator=(const ProfileFormatOptions&) = delete;

 private:
  bool useStack_ = ini_use_stack;
  bool allowRealloc_ = ini_allow_realloc;
  int maxLine_ = ini_max_line;
  bool allowMultiline_ = ini_allow_multiline;
  bool allowInlineComments_ = ini_allow_inline_comments;
  char* startCommentPrefixes_ = ini_start_comment_prefixes;
};

struct Entry {
  std::string key;
  std::string value;
};

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) ==
           std::tolower(static_cast<unsigned char>(y));
  });
}

struct SectionReader {
  std::string_view section;
  std::vector<Entry> entries;
};

// The parser also splits a line at ':', which the profile format does not: a ':' in front of
// the first '=' belongs to the key, so it travels through the parser as this character.
constexpr char kColonInKey = '\x1F';
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

int CollectEntry(void* user, const char* section, const char* name, const char* value) {
  auto& reader = *static_cast<SectionReader*>(user);
  if (!EqualsIgnoringCase(Trim(section), reader.section)) return 1;
  std::string key = name;
  std::replace(key.begin(), key.end(), kColonInKey, ':');
  reader.entries.push_back({std::move(key), value});
  return 1;
}

// The file as the parser is to see it: a line without '=' that is no section and no comment is no
// key, so it goes; a ':' in front of the first '=' is hidden from the parser.
std::string ProfileText(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text;
  for (std::string line; std::getline(file, line);) {
    if (text.empty() && line.starts_with(kByteOrderMark)) line.erase(0, kByteOrderMark.size());
    const std::string_view content = Trim(line);
    const std::size_t equals = line.find('=');
    if (!content.empty() && content.front() != ';' && content.front() != '[') {
      if (equals == std::string::npos) {
        line.clear();
      } else {
        std::replace(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(equals), ':',
                     kColonInKey);
      }
    }
    text += line;
    text += '\n';
  }
  return text;
}

// The section's entries in file order. A file that cannot be opened has no entries.
std::vector<Entry> ReadSection(const std::string& section, const std::string& path) {
  SectionReader reader{section, {}};
  const ProfileFormatOptions options;
  ini_parse_string(ProfileText(path).c_str(), CollectEntry, &reader);
  return std::move(reader.entries);
}

// A value in matching quotes comes without them.
std::string Unquoted(std::string_view value) {
  if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
      value.back() == value.front()) {
    value = value.substr(1, value.size() - 2);
  }
  return std::string(value);
}

std::optional<std::string> ReadValue(const std::string& section, const std::string& key,
                                     const std::string& path) {
  for (const Entry& entry : ReadSection(section, path)) {
    if (EqualsIgnoringCase(entry.key, key)) return Unquoted(entry.value);
  }
  return std::nullopt;
}

std::int32_t LeadingInteger(std::string_view text) {
  constexpr std::int64_t kBeyond = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  std::int64_t magnitude = 0;
  for (const char digit : text) {
    if (!std::isdigit(static_cast<unsigned char>(digit))) break;
    magnitude = std::min(magnitude * 10 + (digit - '0'), kBeyond);
  }
  return static_cast<std::int32_t>(std::clamp(
      negative ? -magnitude : magnitude, std::int64_t{std::numeric_limits<std::int32_t>::min()},
      std::int64_t{std::numeric_limits<std::int32_t>::max()}));
}

std::size_t Room(std::int32_t size) {
  return static_cast<std::size_t>(std::max(size, 0));
}

}  // namespace

std::int32_t GetPrivateProfileIntA(const std::string& section, const std::string& key,
                                   std::int32_t defaultValue, const std::string& path) {
  const std::optional<std::string> value = ReadValue(section, key, path);
  if (!value || value->empty()) return defaultValue;
  return LeadingInteger(*value);
}

std::int32_t GetPrivateProfileStringA(const std::string& section, const std::string& key,
                                      const std::string& defaultValue, std::string& buffer,
                                      std::int32_t size, const std::string& path) {
  buffer = ReadValue(section, key, path).value_or(defaultValue);
  // One place of the buffer is the closing NUL.
  if (buffer.size() >= Room(size)) buffer.resize(Room(size) > 0 ? Room(size) - 1 : 0);
  return static_cast<std::int32_t>(buffer.size());
}

std::int32_t GetPrivateProfileSectionA(const std::string& section, std::string& buffer,
                                       std::int32_t size, const std::string& path) {
  buffer.clear();
  for (const Entry& entry : ReadSection(section, path)) {
    buffer += entry.key;
    buffer += '=';
    buffer += entry.value;
    buffer += '\0';
  }
  // The list closes with a second NUL; a list cut short keeps room for both.
  if (buffer.size() >= Room(size)) buffer.resize(Room(size) > 1 ? Room(size) - 2 : 0);
  return static_cast<std::int32_t>(buffer.size());
}

}  // namespace ombrelay
