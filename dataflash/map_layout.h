#pragma once
// The parameters of the configured gauge's dataflash map, each with its absolute address and
// type: what a backup reads.

#include <string>
#include <vector>

#include "dataflash/dataflash_backup.h"

namespace ombrelay {

// The parameters of the map at g_sDataFlashMapPath in the map's order, bytes and values still
// empty. False, with why in failure, when the map does not load, or a parameter has a type of
// no known size or reaches past the last address. A parameter whose class, subclass and name
// all repeat an earlier one is left out: it is the earlier one that the map search finds, and
// its bytes are in the rows all the same.
bool ReadMapLayout(std::vector<BackupParameter>& parameters, std::string& failure);

}  // namespace ombrelay
