#include "config/map_library.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "shell/json_file.h"

namespace ombrelay {
namespace {

using nlohmann::json;

constexpr const char* kFormat = "ombrelay-dataflash-map/1";

// A map file is not trusted: these bound what a hostile one can make us hold.
constexpr std::size_t kMaxTextLength = 1024;
constexpr std::size_t kMaxSubclasses = 1000;
constexpr std::size_t kMaxParameters = 10000;
// Identifiers and offsets stay within 16 bits, so that their sum still fits the program's
// 32-bit arithmetic before it checks the address.
constexpr std::uint64_t kMaxAddress = 65535;

struct MapParameter {
  std::string name;
  std::int32_t offset = 0;
  std::string type;
  std::string value;
  std::string defaultValue;
};

struct MapSubclass {
  std::string name;
  std::int32_t id = 0;
  std::vector<MapParameter> parameters;
};

struct MapClass {
  std::string name;
  std::vector<MapSubclass> subclasses;
};

// The one loaded map; no classes while nothing is loaded.
struct LoadedMap {
  std::vector<MapClass> classes;
  std::string loadError;
};
LoadedMap loaded;

// Why a file is refused; thrown and caught only inside the loader.
class MapRefused : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

const json& Member(const json& object, const char* key, const std::string& where) {
  const auto member = object.find(key);
  if (member == object.end()) throw MapRefused(where + key + " is missing");
  return *member;
}

std::string Text(const json& object, const char* key, const std::string& where) {
  const json& member = Member(object, key, where);
  if (!member.is_string()) throw MapRefused(where + key + " is not a text");
  const auto& text = member.get_ref<const std::string&>();
  if (text.size() > kMaxTextLength) {
    throw MapRefused(where + key + " is longer than " + std::to_string(kMaxTextLength) +
                     " characters");
  }
  return text;
}

std::int32_t Address(const json& object, const char* key, const std::string& where) {
  const json& member = Member(object, key, where);
  // The parser gives every integer without a sign the unsigned kind.
  if (!member.is_number_unsigned() || member.get<std::uint64_t>() > kMaxAddress) {
    throw MapRefused(where + key + " is not an integer from 0 to " + std::to_string(kMaxAddress));
  }
  return static_cast<std::int32_t>(member.get<std::uint64_t>());
}

// The list member key of object, each element read by read with its place in the message.
template <typename Reader>
auto ReadList(const json& object, const char* key, std::size_t limit, const std::string& where,
              const std::string& element, Reader read) {
  const json& list = Member(object, key, where);
  if (!list.is_array()) throw MapRefused(where + key + " is not a list");
  if (list.size() > limit) {
    throw MapRefused(where + "more than " + std::to_string(limit) + " " + key);
  }
  std::vector<decltype(read(list, where))> items;
  items.reserve(list.size());
  for (std::size_t i = 0; i < list.size(); ++i) {
    const std::string place = where + element + " " + std::to_string(i);
    if (!list[i].is_object()) throw MapRefused(place + " is not an object");
    items.push_back(read(list[i], place + ": "));
  }
  return items;
}

MapParameter ReadParameter(const json& object, const std::string& where) {
  return {Text(object, "name", where), Address(object, "offset", where),
          Text(object, "type", where), Text(object, "value", where),
          Text(object, "default", where)};
}

MapSubclass ReadSubclass(const json& object, const std::string& where) {
  return {Text(object, "name", where), Address(object, "id", where),
          ReadList(object, "parameters", kMaxParameters, where, "parameter", ReadParameter)};
}

MapClass ReadClass(const json& object, const std::string& where) {
  return {Text(object, "name", where),
          ReadList(object, "subclasses", kMaxSubclasses, where, "subclass", ReadSubclass)};
}

std::vector<MapClass> ReadMap(const std::string& path) {
  const json root = ReadJsonFile(path);
  if (!root.is_object()) throw MapRefused("not an object");
  const auto format = root.find("format");
  if (format == root.end() || *format != kFormat) {
    throw MapRefused(std::string("format is not ") + kFormat);
  }
  return ReadList(root, "classes", static_cast<std::size_t>(kMaxMapClasses), "", "class",
                  ReadClass);
}

template <typename Item>
const Item* At(const std::vector<Item>& items, std::int32_t index) {
  if (index < 0 || static_cast<std::size_t>(index) >= items.size()) return nullptr;
  return &items[static_cast<std::size_t>(index)];
}

const MapClass* ClassAt(std::int32_t iClass) {
  return At(loaded.classes, iClass);
}

const MapSubclass* SubclassAt(std::int32_t iClass, std::int32_t iSubclass) {
  const MapClass* mapClass = ClassAt(iClass);
  return mapClass ? At(mapClass->subclasses, iSubclass) : nullptr;
}

const MapParameter* ParameterAt(std::int32_t iClass, std::int32_t iSubclass,
                                std::int32_t iParameter) {
  const MapSubclass* subclass = SubclassAt(iClass, iSubclass);
  return subclass ? At(subclass->parameters, iParameter) : nullptr;
}

template <typename Item>
std::int32_t Count(const std::vector<Item>& items) {
  return static_cast<std::int32_t>(items.size());
}

// Writes text, or an empty text when there is no such item (nullptr), cut to fit the buffer.
std::int32_t CopyText(const std::string* text, std::span<char> buffer) {
  const std::string_view source = text ? std::string_view(*text) : std::string_view();
  if (!buffer.empty()) {
    const std::size_t length = std::min(source.size(), buffer.size() - 1);
    std::copy_n(source.begin(), length, buffer.begin());
    buffer[length] = '\0';
  }
  return text ? 0 : 1;
}

}  // namespace

std::int32_t LoadCfgFile(const std::string& path) {
  loaded.classes.clear();
  try {
    loaded.classes = ReadMap(path);
    return 0;
  } catch (const MapRefused& refusal) {
    loaded.loadError = refusal.what();
  } catch (const JsonRefused& refusal) {
    loaded.loadError = refusal.what();
  } catch (const std::exception& failure) {
    loaded.loadError = std::string("cannot be read: ") + failure.what();
  }
  return 1;
}

std::int32_t UnloadCfgFile() {
  loaded.classes.clear();
  return 0;
}

const std::string& MapLoadError() {
  return loaded.loadError;
}

std::int32_t GetNumClasses() {
  return Count(loaded.classes);
}

std::int32_t GetNumSubClasses(std::int32_t iClass) {
  const MapClass* mapClass = ClassAt(iClass);
  return mapClass ? Count(mapClass->subclasses) : 0;
}

std::int32_t GetNumData(std::int32_t iClass, std::int32_t iSubclass) {
  const MapSubclass* subclass = SubclassAt(iClass, iSubclass);
  return subclass ? Count(subclass->parameters) : 0;
}

std::int32_t GetClass(std::int32_t iClass, std::span<char> buffer) {
  const MapClass* mapClass = ClassAt(iClass);
  return CopyText(mapClass ? &mapClass->name : nullptr, buffer);
}

std::int32_t GetNextSubClass(std::int32_t iClass, std::int32_t iSubclass, std::int32_t& lId,
                             std::span<char> buffer) {
  const MapSubclass* subclass = SubclassAt(iClass, iSubclass);
  lId = subclass ? subclass->id : 0;
  return CopyText(subclass ? &subclass->name : nullptr, buffer);
}

std::int32_t GetName(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter,
                     std::span<char> buffer) {
  const MapParameter* parameter = ParameterAt(iClass, iSubclass, iParameter);
  return CopyText(parameter ? &parameter->name : nullptr, buffer);
}

std::int32_t GetOffset(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter) {
  const MapParameter* parameter = ParameterAt(iClass, iSubclass, iParameter);
  return parameter ? parameter->offset : 0;
}

std::int32_t GetValue(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter,
                      std::span<char> buffer) {
  const MapParameter* parameter = ParameterAt(iClass, iSubclass, iParameter);
  return CopyText(parameter ? &parameter->value : nullptr, buffer);
}

std::int32_t GetDefValue(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter,
                         std::span<char> buffer) {
  const MapParameter* parameter = ParameterAt(iClass, iSubclass, iParameter);
  return CopyText(parameter ? &parameter->defaultValue : nullptr, buffer);
}

std::int32_t GetDataType(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter,
                         std::span<char> buffer) {
  const MapParameter* parameter = ParameterAt(iClass, iSubclass, iParameter);
  return CopyText(parameter ? &parameter->type : nullptr, buffer);
}

}  // namespace ombrelay
