#pragma once
// A backup as a JSON file, format "ombrelay-dataflash-backup/1":
//
//   { "format": "ombrelay-dataflash-backup/1",
//     "gauge": { "device": "4D31", "firmware": "2_05", "firmware_type": "1", "build": "0020",
//                "family": "MORLIN", "dataflash_map": "maps/morlin-4D31-2_05.json" },
//     "parameters": { CLASS: { SUBCLASS: { PARAMETER:
//         { "address": 0, "type": "I2", "bytes": "4FE3", "value": "20451" } } } },
//     "rows": { "0": "4FE34FF4...", "2": ... } }
//
// Bytes are upper-case hex, first byte first; a row is its 32 bytes. A file is read as a whole
// and refused at its first flaw, so that nothing of a bad backup ever reaches a gauge.

#include <optional>
#include <string>

#include "dataflash/dataflash_backup.h"

namespace ombrelay {

// False, with why in failure, when the file cannot be written.
bool WriteBackupFile(const std::string& path, const DataflashBackup& backup, std::string& failure);

// The backup in the file at path. Nothing, with why in failure, when the file cannot be read, is
// not JSON of this format, lacks a member or has one of the wrong kind, holds a type of no known
// size, bytes of the wrong length, an address or row out of range, a value that its bytes do not
// give, bytes that its rows do not hold, or a row that no parameter lies in.
std::optional<DataflashBackup> ReadBackupFile(const std::string& path, std::string& failure);

}  // namespace ombrelay
