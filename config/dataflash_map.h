#pragma once
// The connected gauge's dataflash map: found through the host's Quvara.ini and the target file
// it names, and searched by class, subclass and parameter name for a parameter's place.

#include <cstdint>
#include <string>

namespace ombrelay {

// What FindDFParameter gives when the parameter is not in the map.
inline constexpr std::int32_t kParameterNotFound = 999;

// Finds the map file of the identified gauge and sets g_sDataFlashMapPath to its full path, or
// to "NG" when the map library refuses it. 0 when a target was found, also when its map was
// refused; 1 after a message when there is no target or no map named for it. Leaves the map
// unloaded.
std::int32_t LocateDataflashMap();

// Walks the loaded map in index order for the first parameter vParameter in a subclass sSubclass
// of a class sClass, names compared exactly, and gives the class index with the parameter's
// place and texts; kParameterNotFound when there is none, after a message unless bSilent. Every
// class and subclass of the right name is searched, not just the first. After a miss lSubclassID
// holds the identifier read last and the other outputs are untouched.
std::int32_t FindDFParameter(const std::string& sClass, const std::string& sSubclass,
                             const std::string& vParameter, std::int32_t& lSubclassID,
                             std::int32_t& lOffset, std::string& sParamValue,
                             std::string& sParamDefault, std::string& sParamType, bool bSilent);

// The map's texts as the searches read them: through a 128-character buffer, so cut to 127.
std::string MapClassName(std::int32_t iClass);
std::string MapSubclassName(std::int32_t iClass, std::int32_t iSubclass, std::int32_t& lId);
std::string MapParameterName(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter);
std::string MapParameterValue(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter);
std::string MapParameterDefault(std::int32_t iClass, std::int32_t iSubclass,
                                std::int32_t iParameter);
// Folded to upper case.
std::string MapParameterType(std::int32_t iClass, std::int32_t iSubclass, std::int32_t iParameter);

}  // namespace ombrelay
