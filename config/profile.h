#pragma once
// The initialisation-file calls: lines "key=value" under "[section]" lines, the file read afresh
// at each call. Section names and keys compare without regard to case, the first occurrence of
// a key in a section counts, values come trimmed of blanks, and lines starting with ';' are
// comments. A line without '=' is no key, and the key is everything in front of the first '='.
// A file that cannot be read counts as empty.

#include <cstdint>
#include <string>

namespace ombrelay {

// The value read as a number, out of matching quotes: an optional sign and decimal digits, up to
// the first other character; no digits read as 0, and values beyond 32 bits saturate. A missing or
// empty value gives defaultValue.
std::int32_t GetPrivateProfileIntA(const std::string& section, const std::string& key,
                                   std::int32_t defaultValue, const std::string& path);

// Puts the value, out of matching quotes, or defaultValue when the key is missing, into buffer, at
// most size - 1 characters of it, and returns the number of characters put there.
std::int32_t GetPrivateProfileStringA(const std::string& section, const std::string& key,
                                      const std::string& defaultValue, std::string& buffer,
                                      std::int32_t size, const std::string& path);

// Puts the section's lines into buffer as "key=value\0key=value\0" and returns their length, 0
// for a missing section or one without keys. When they need more than size characters with the
// closing NUL, they are cut to size - 2 characters.
std::int32_t GetPrivateProfileSectionA(const std::string& section, std::string& buffer,
                                       std::int32_t size, const std::string& path);

}  // namespace ombrelay
