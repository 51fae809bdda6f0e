#pragma once
// One section of config.ini read into the shared settings: the device family, its sensors, its
// command codes and where the System Configuration parameter sits in its dataflash.

#include <cstdint>
#include <string>
#include <string_view>

#include "shell/host.h"

namespace ombrelay {

// 0, or 1 after a message. Every number and flag is set anew, from the section or from its
// default; read commands, the family and the System Configuration address survive from an
// earlier section where this one leaves them alone.
Status ReadConfigurationSection(const std::string& sSection, const std::string& sPath);

// The family's name as config.ini's DFType gives it, "KELD" to "KELD_PLUS"; empty for a value
// that is none of the four.
std::string_view FamilyName(std::int32_t dfType);

}  // namespace ombrelay
