#pragma once
// Loading the configuration that applies to the identified gauge: its dataflash map and the
// sections of config.ini, from the least to the most specific.

#include <string>
#include <vector>

#include "shell/host.h"

namespace ombrelay {

// Tries the five section names of the identified gauge in config.ini; 0 when at least one was
// found.
Status LoadDeviceConfiguration();

// The sections of config.ini at path that apply to the identified gauge, from the least to the
// most specific: the ones the configuration was read from.
std::vector<std::string> FoundSectionNames(const std::string& path);

// The dataflash map, then config.ini; 0 when configured.
Status LoadConfigurationforDevice();

// The security panel's start: identification, map and config.ini, each failure only reported.
void LoadConfigurationforSecurityPanel();

// For the host: splits "1.2.3" into the device section "1" and the version section "1_2_3".
// False, with both left as they were, when sDevVer holds no ".".
bool GetConfigSection(const std::string& sDevVer, std::string& sDeviceConfigSection,
                      std::string& sVersionConfigSection);

}  // namespace ombrelay
