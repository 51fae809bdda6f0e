#pragma once
// The map library: one dataflash map file at a time, loaded and then walked by index as a tree
// of classes, subclasses and parameters. Maps are JSON files of the form
//
//   { "format": "ombrelay-dataflash-map/1",
//     "classes": [ { "name": ..., "subclasses": [ { "name": ..., "id": ..., "parameters": [
//         { "name": ..., "offset": ..., "type": ..., "value": ..., "default": ... } ] } ] } ] }
//
// Indexes start at 0. Counting calls give 0 while nothing is loaded, and an index that names
// nothing gives 0 or an empty text, so a search over an absent map simply finds nothing. Text
// calls write a NUL-terminated text into the caller's buffer, cut to fit; they give 0 when the
// item exists and 1 when it does not.

#include <cstdint>
#include <span>
#include <string>

namespace ombrelay {

// The most classes a map may have: their indexes run from 0 to 998, below the 999 with which the
// parameter search says "not found".
inline constexpr std::int32_t kMaxMapClasses = 999;

// 0 when the map at path is loaded. A refused file leaves no map loaded, so that a caller who
// goes on regardless finds nothing rather than a map loaded earlier.
std::int32_t LoadCfgFile(const std::string& path);
std::int32_t UnloadCfgFile();

// Why the last refused load was refused, e.g. "class 3: subclass 1: offset is not an integer
// from 0 to 65535"; empty until a load is refused.
const std::string& MapLoadError();

std::int32_t GetNumClasses();
std::int32_t GetNumSubClasses(std::int32_t iClass);
std::int32_t GetNumData(std::int32_t iClass, std::int32_t iSubclass);

std::int32_t GetClass(std::int32_t iClass, std::span<char> buffer);
// The subclass by index, with its identifier: its base address in dataflash. lId is 0 when
// there is no such subclass.
std::int32_t GetNextSubClass(std::int32_t iClass, std::int32_t iSubclass, std::int32_t& lId,
                             std::span<char> buffer);
std::int32_t GetName(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter,
                     std::span<char> buffer);
// The parameter's offset within its subclass.
std::int32_t GetOffset(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter);
std::int32_t GetValue(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter,
                      std::span<char> buffer);
std::int32_t GetDefValue(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter,
                         std::span<char> buffer);
std::int32_t GetDataType(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter,
                         std::span<char> buffer);

}  // namespace ombrelay
