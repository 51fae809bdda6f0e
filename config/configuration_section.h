#pragma once
// One section of config.ini read into the shared settings: the device family, its sensors, its
// command codes and where the System Configuration parameter sits in its dataflash.

#include <string>

#include "shell/host.h"

namespace ombrelay {

// 0, or 1 after a message. Every number and flag is set anew, from the section or from its
// default; read commands, the family and the System Configuration address survive from an
// earlier section where this one leaves them alone.
Status ReadConfigurationSection(const std::string& sSection, const std::string& sPath);

}  // namespace ombrelay
