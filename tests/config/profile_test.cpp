#include "config/profile.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using testing::TempAppDir;

class Profile : public ::testing::Test {
 protected:
  void Write(const std::string& content) { dir.Write("test.ini", content); }
  std::string String(const std::string& section, const std::string& key,
                     const std::string& defaultValue = "default", std::int32_t size = 8192) {
    std::string buffer;
    const std::int32_t count =
        GetPrivateProfileStringA(section, key, defaultValue, buffer, size, path);
    EXPECT_EQ(count, static_cast<std::int32_t>(buffer.size()));
    return buffer;
  }
  std::int32_t Int(const std::string& value) {
    Write("[S]\nkey=" + value + "\n");
    return GetPrivateProfileIntA("S", "key", -99, path);
  }

  TempAppDir dir{false};
  std::string path = (dir.Path() / "test.ini").string();
};

TEST_F(Profile, SectionsAndKeysIgnoreCaseAndTheFirstOccurrenceWins) {
  Write(
      "[Targets]\nKey=first\nKEY=second\n"
      "[Other]\nkey=other\n"
      "[ targets ]\nkey=third\nlater=4\n");
  EXPECT_EQ(String("TARGETS", "key"), "first");
  EXPECT_EQ(String("targets", "LATER"), "4");
  EXPECT_EQ(String("Other", "Key"), "other");
}

TEST_F(Profile, MissingFileSectionOrKeyGivesTheDefault) {
  EXPECT_EQ(String("Targets", "key"), "default");
  EXPECT_EQ(GetPrivateProfileIntA("Targets", "key", 7, path), 7);

  Write("[Targets]\nkey=1\nempty=\n[Hollow]\n");
  EXPECT_EQ(String("Missing", "key"), "default");
  EXPECT_EQ(String("Targets", "missing"), "default");
  EXPECT_EQ(String("Targets", "missing", ""), "");
  EXPECT_EQ(String("Targets", "empty"), "");
  EXPECT_EQ(GetPrivateProfileIntA("Targets", "empty", 7, path), 7);

  std::string buffer = "stale";
  EXPECT_EQ(GetPrivateProfileSectionA("Hollow", buffer, 2082, path), 0);
  EXPECT_EQ(GetPrivateProfileSectionA("Missing", buffer, 2082, path), 0);
  EXPECT_EQ(buffer, "");
}

TEST_F(Profile, LinesAreTakenAsTheyStand) {
  Write(
      "; a comment=no\n[S]\nfirst=1\n  indented = a value with blanks  \t\n"
      "semicolon=MAC,72 ; kept\n#hash=key\nno equals sign\nDFType:KELD\nport:a=b:c\nnext=1\n");
  EXPECT_EQ(String("S", "indented"), "a value with blanks");
  EXPECT_EQ(String("S", "semicolon"), "MAC,72 ; kept");
  EXPECT_EQ(String("S", "#hash"), "key");
  EXPECT_EQ(String("S", "next"), "1");
  EXPECT_EQ(String("", "; a comment"), "default");
  // Only '=' ends a key: a line with ':' alone is none, and a ':' before the '=' is the key's.
  EXPECT_EQ(String("S", "DFType"), "default");
  EXPECT_EQ(String("S", "port"), "default");
  EXPECT_EQ(String("S", "port:a"), "b:c");
}

TEST_F(Profile, AValueInMatchingQuotesLosesThem) {
  Write("[S]\ndouble=\" KELD \"\nsingle='7'\nmixed=\"x'\nalone=\"\ninner=a\"b\"\n");
  EXPECT_EQ(String("S", "double"), " KELD ");
  EXPECT_EQ(String("S", "single"), "7");
  EXPECT_EQ(GetPrivateProfileIntA("S", "single", -1, path), 7);
  EXPECT_EQ(String("S", "mixed"), "\"x'");
  EXPECT_EQ(String("S", "alone"), "\"");
  EXPECT_EQ(String("S", "inner"), "a\"b\"");
  std::string buffer;
  GetPrivateProfileSectionA("S", buffer, 2082, path);
  EXPECT_EQ(buffer.substr(0, 16), std::string("double=\" KELD \"\0", 16)) << "listed as written";
}

TEST_F(Profile, LongValuesComeBackWhole) {
  const std::string value(2046, 'v');
  const std::string longer(5000, 'w');
  Write("[S]\nkey=" + value + "\nlonger=" + longer + "\nafter=1\n");
  EXPECT_EQ(String("S", "key"), value);
  EXPECT_EQ(String("S", "longer"), longer);
  EXPECT_EQ(String("S", "after"), "1");
}

TEST_F(Profile, TheBufferSizeBoundsWhatIsCopied) {
  Write("[S]\nkey=abcdefgh\nb=2\n");
  EXPECT_EQ(String("S", "key", "", 5), "abcd");
  EXPECT_EQ(String("S", "key", "", 9), "abcdefgh");
  EXPECT_EQ(String("S", "key", "", 1), "");
  EXPECT_EQ(String("S", "key", "", 0), "");
  EXPECT_EQ(String("S", "key", "", -3), "");

  std::string buffer;
  EXPECT_EQ(GetPrivateProfileSectionA("s", buffer, 100, path), 17);
  EXPECT_EQ(buffer, std::string("key=abcdefgh\0b=2\0", 17));
  EXPECT_EQ(GetPrivateProfileSectionA("s", buffer, 18, path), 17);
  EXPECT_EQ(GetPrivateProfileSectionA("s", buffer, 17, path), 15);
  EXPECT_EQ(buffer, std::string("key=abcdefgh\0b=", 15));
}

TEST_F(Profile, IntegersReadAsThePlatformReadsThem) {
  constexpr auto kMax = std::numeric_limits<std::int32_t>::max();
  constexpr auto kMin = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ(Int("42"), 42);
  EXPECT_EQ(Int("  -17  "), -17);
  EXPECT_EQ(Int("+8"), 8);
  EXPECT_EQ(Int("12abc"), 12);
  EXPECT_EQ(Int("61568"), 61568);
  EXPECT_EQ(Int("abc"), 0);
  EXPECT_EQ(Int("-"), 0);
  EXPECT_EQ(Int("--5"), 0);
  EXPECT_EQ(Int("0x2D"), 0);
  EXPECT_EQ(Int(""), -99);
  EXPECT_EQ(Int("2147483647"), kMax);
  EXPECT_EQ(Int("2147483648"), kMax);
  EXPECT_EQ(Int("-2147483648"), kMin);
  EXPECT_EQ(Int("99999999999999999999999"), kMax);
  EXPECT_EQ(Int("-99999999999999999999999"), kMin);
}

TEST_F(Profile, GarbageAndLargeFilesAreReadWithoutHarm) {
  std::mt19937 random(7);
  std::string garbage(64 * 1024, '\0');
  for (char& byte : garbage)
    byte = static_cast<char>(random());
  Write(garbage);
  EXPECT_EQ(String("S", "key"), "default");
  std::string buffer;
  GetPrivateProfileSectionA("S", buffer, 2082, path);

  std::string large;
  for (int i = 0; i < 100000; ++i)
    large += "[S" + std::to_string(i) + "]\nkey=value\n";
  Write(large + "[Last]\nkey=found\n");
  EXPECT_EQ(String("Last", "key"), "found");

  EXPECT_EQ(GetPrivateProfileIntA("S", "key", 3, dir.Path().string()), 3);
}

}  // namespace
}  // namespace ombrelay
