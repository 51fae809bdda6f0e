#pragma once
// What every dataflash operation on a gauge starts with: the gauge identified and configured as
// a panel's start-up does it, afresh each time, since the gauge on the bus may have changed;
// then the checks that the operation can be made on it.

#include <string>

#include "dataflash/dataflash_backup.h"
#include "shell/host.h"
#include "shell/platform.h"

namespace ombrelay {

// Points the shared state at host and platform, reads the identification and loads the
// configuration and map that apply; the identity found goes to identity. False, with why in
// failure, when the gauge does not identify itself, is not configured, or is of a family
// without absolute dataflash access (KELD, QUILL).
bool PrepareGauge(Host& host, Platform& platform, BackupIdentity& identity, std::string& failure);

// True when the gauge's security mode lets its dataflash be read and written: Unsealed or Full
// Access. Else false, with why in failure; purpose ("a backup", "a restore") says what waits.
bool CheckSecurityMode(const std::string& purpose, std::string& failure);

}  // namespace ombrelay
