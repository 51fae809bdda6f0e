#pragma once
// Whole rows of the gauge's dataflash through absolute access: read as an absolute read does,
// written one by one with a read-back that must match.

#include <cstdint>
#include <set>
#include <string>

#include "dataflash/dataflash_backup.h"

namespace ombrelay {

// Reads rows, in order, after the start that every absolute read makes. False, with why in
// failure, at the first row that is not requested or read whole; nothing is read after it.
bool ReadGaugeRows(const std::set<std::int32_t>& rows, DataflashRows& read, std::string& failure);

// Writes bytes into row, then requests and reads the row again and compares it byte by byte.
// False, with why in failure, when a step fails or the row reads back otherwise.
bool WriteVerifiedRow(std::int32_t row, const DataflashRow& bytes, std::string& failure);

}  // namespace ombrelay
