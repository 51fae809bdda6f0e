#pragma once
// The dataflash commands: a backup of the gauge into a file, a comparison of a backup with the
// gauge or with a second backup, and a restore. The backups a command reads are read before any
// bus is opened, so that a refused file never reaches a gauge.

#include <vector>

#include "cli/options.h"
#include "cli/report.h"
#include "cli/session.h"
#include "dataflash/dataflash_backup.h"

namespace ombrelay::cli {

// The backups that diff and restore name, in order; none for the other commands. False, with
// why in report, when one is refused.
bool ReadBackups(const Options& options, std::vector<DataflashBackup>& backups, Report& report);

// diff of two backups, the first before, the second after.
void CompareBackupFiles(const std::vector<DataflashBackup>& backups, Report& report);

// backup, diff with the gauge and restore, on the gauge of session; backups as ReadBackups gave
// them.
void Dataflash(Session& session, const Options& options,
               const std::vector<DataflashBackup>& backups, Report& report);

}  // namespace ombrelay::cli
