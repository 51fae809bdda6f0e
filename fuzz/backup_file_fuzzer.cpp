// The input is a dataflash backup file. What the reader accepts must come through its own round
// trip unchanged, written and read again, and compare with itself as no change. A refusal with its
// reason is fine; a crash, an escaping exception, a refusal without a reason or a broken round trip
// is a finding.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "dataflash/backup_comparison.h"
#include "dataflash/backup_file.h"
#include "fuzz/scratch_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ombrelay;
  static const fuzz::ScratchFile input("backup.json");
  static const fuzz::ScratchFile again("again.json");
  input.Write(data, size);
  std::string failure;
  const std::optional<DataflashBackup> backup = ReadBackupFile(input.Path(), failure);
  if (!backup) {
    if (failure.empty()) std::abort();
    return 0;
  }
  if (!WriteBackupFile(again.Path(), *backup, failure)) std::abort();
  const std::optional<DataflashBackup> reread = ReadBackupFile(again.Path(), failure);
  if (!reread || reread->identity != backup->identity || reread->parameters != backup->parameters ||
      reread->rows != backup->rows)
    std::abort();
  const BackupComparison itself = CompareBackups(*backup, *reread);
  if (!itself.identity.empty() || !itself.parameters.empty() || !itself.rows.empty()) std::abort();
  return 0;
}
