#include "config/map_library.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/temp_appdir.h"

namespace ombrelay {
namespace {

using nlohmann::json;
using testing::TempAppDir;

json Parameter(const std::string& name, json offset = 2) {
  return {{"name", name}, {"offset", offset}, {"type", "h2"}, {"value", "3"}, {"default", "1"}};
}

json Map(json subclasses, const std::string& className = "Configuration") {
  return {{"format", "ombrelay-dataflash-map/1"},
          {"classes", json::array({{{"name", className}, {"subclasses", subclasses}}})}};
}

json Subclass(json id, json parameters) {
  return {{"name", "Registers"}, {"id", id}, {"parameters", parameters}};
}

const json kSample = Map(json::array(
    {Subclass(64, json::array()), Subclass(68, json::array({Parameter("Operation Cfg A")}))}));

template <typename Call>
std::string Text(Call call) {
  std::array<char, 128> buffer;
  buffer.fill('x');
  call(std::span<char>(buffer));
  return buffer.data();
}

class MapLibrary : public ::testing::Test {
 protected:
  ~MapLibrary() override { UnloadCfgFile(); }

  std::int32_t Load(const std::string& content) {
    dir.Write("map.json", content);
    return LoadCfgFile((dir.Path() / "map.json").string());
  }

  TempAppDir dir{false};
};

TEST_F(MapLibrary, ServesTheTreeByIndexAndNothingOutsideIt) {
  ASSERT_EQ(Load(kSample.dump()), 0) << MapLoadError();
  EXPECT_EQ(GetNumClasses(), 1);
  EXPECT_EQ(GetNumSubClasses(0), 2);
  EXPECT_EQ(GetNumData(0, 0), 0);
  EXPECT_EQ(GetNumData(0, 1), 1);
  std::int32_t id = -1;
  EXPECT_EQ(Text([&](auto buffer) { GetNextSubClass(0, 1, id, buffer); }), "Registers");
  EXPECT_EQ(id, 68);
  EXPECT_EQ(Text([](auto buffer) { GetName(0, 1, 0, buffer); }), "Operation Cfg A");
  EXPECT_EQ(GetOffset(0, 1, 0), 2);
  EXPECT_EQ(Text([](auto buffer) { GetValue(0, 1, 0, buffer); }), "3");
  EXPECT_EQ(Text([](auto buffer) { GetDefValue(0, 1, 0, buffer); }), "1");
  EXPECT_EQ(Text([](auto buffer) { GetDataType(0, 1, 0, buffer); }), "h2");

  EXPECT_EQ(GetNumSubClasses(-1), 0);
  EXPECT_EQ(GetNumData(0, 2), 0);
  EXPECT_EQ(GetOffset(0, 1, 1), 0);
  EXPECT_EQ(Text([](auto buffer) { GetClass(1, buffer); }), "");
  EXPECT_EQ(Text([&](auto buffer) { GetNextSubClass(0, 2, id, buffer); }), "");
  EXPECT_EQ(id, 0);
  EXPECT_EQ(Text([](auto buffer) { GetDataType(0, 1, -1, buffer); }), "");

  UnloadCfgFile();
  EXPECT_EQ(GetNumClasses(), 0);
  EXPECT_EQ(GetNumSubClasses(0), 0);
  EXPECT_EQ(GetNumData(0, 1), 0);
}

TEST_F(MapLibrary, TextsAreCutToFitTheCallersBuffer) {
  const std::string longName(200, 'n');
  ASSERT_EQ(Load(Map(json::array(), longName).dump()), 0);
  EXPECT_EQ(Text([](auto buffer) { GetClass(0, buffer); }), longName.substr(0, 127));
  std::array<char, 1> one{'x'};
  GetClass(0, one);
  EXPECT_EQ(one[0], '\0');
  EXPECT_EQ(GetClass(0, std::span<char>()), 0);
}

TEST_F(MapLibrary, ARefusedFileLeavesNoMapLoaded) {
  ASSERT_EQ(Load(kSample.dump()), 0);
  EXPECT_NE(LoadCfgFile("NG"), 0);
  EXPECT_EQ(MapLoadError(), "not a file");
  EXPECT_EQ(GetNumClasses(), 0);
  EXPECT_NE(LoadCfgFile(dir.Path().string()), 0);

  dir.Write("huge.json", "");
  std::filesystem::resize_file(dir.Path() / "huge.json", 17 * 1024 * 1024);
  EXPECT_NE(LoadCfgFile((dir.Path() / "huge.json").string()), 0);
  EXPECT_EQ(MapLoadError(), "larger than 16 MiB");
}

TEST_F(MapLibrary, RefusesMalformedAndHostileFilesWithAReason) {
  json tooManyParameters = json::array();
  for (int i = 0; i < 10001; ++i)
    tooManyParameters.push_back(Parameter("P"));
  json tooManyClasses = kSample;
  for (int i = 0; i < kMaxMapClasses; ++i)
    tooManyClasses["classes"].push_back(kSample["classes"][0]);
  json tooDeep = kSample;
  tooDeep["notes"] = json::parse(std::string(20, '[') + std::string(20, ']'));
  json missingType = Parameter("P");
  missingType.erase("type");
  const auto withParameter = [](json parameter) {
    return Map(json::array({Subclass(0, json::array({Parameter("A"), parameter}))})).dump();
  };
  const std::string badOffset =
      "class 0: subclass 0: parameter 1: offset is not an integer from 0 to 65535";

  const std::vector<std::pair<std::string, std::string>> cases = {
      {"{\"format\": ", "not JSON"},
      {std::string("\x00\xff\x13{[\x80", 6), "not JSON"},
      {"[]", "not an object"},
      {R"({"format": "ombrelay-dataflash-map/2", "classes": []})",
       "format is not ombrelay-dataflash-map/1"},
      {R"({"format": 1, "classes": []})", "format is not ombrelay-dataflash-map/1"},
      {R"({"format": "ombrelay-dataflash-map/1"})", "classes is missing"},
      {R"({"format": "ombrelay-dataflash-map/1", "classes": {}})", "classes is not a list"},
      {R"({"format": "ombrelay-dataflash-map/1", "classes": [1]})", "class 0 is not an object"},
      {tooManyClasses.dump(), "more than 999 classes"},
      {tooDeep.dump(), "nested deeper than 16 levels"},
      {Map(json::array({Subclass(-1, json::array())})).dump(),
       "class 0: subclass 0: id is not an integer from 0 to 65535"},
      {Map(json::array({Subclass(0, tooManyParameters)})).dump(),
       "class 0: subclass 0: more than 10000 parameters"},
      {Map(json::array(), std::string(1025, 'c')).dump(),
       "class 0: name is longer than 1024 characters"},
      {withParameter(missingType), "class 0: subclass 0: parameter 1: type is missing"},
      {withParameter(Parameter(std::string(1025, 'p'))),
       "class 0: subclass 0: parameter 1: name is longer than 1024 characters"},
      {withParameter({{"name", 5}}), "class 0: subclass 0: parameter 1: name is not a text"},
      {withParameter(Parameter("B", 65536)), badOffset},
      {withParameter(Parameter("B", -1)), badOffset},
      {withParameter(Parameter("B", 1.5)), badOffset},
      {withParameter(Parameter("B", "3")), badOffset},
      {withParameter(Parameter("B", 18446744073709551615ULL)), badOffset},
  };
  for (const auto& [content, reason] : cases) {
    ASSERT_EQ(Load(kSample.dump()), 0);
    EXPECT_NE(Load(content), 0) << reason;
    EXPECT_EQ(MapLoadError(), reason);
    EXPECT_EQ(GetNumClasses(), 0) << reason;
  }
}

}  // namespace
}  // namespace ombrelay
