#include "fuzz/scratch_file.h"

#include <stdlib.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace ombrelay::fuzz {

ScratchFile::ScratchFile(const std::string& name) {
  std::string pattern = (std::filesystem::temp_directory_path() / "ombrelay-fuzz-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    std::perror("cannot make a scratch folder");
    std::abort();
  }
  folder_ = pattern;
  file_ = folder_ / name;
}

ScratchFile::~ScratchFile() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

void ScratchFile::Write(const std::uint8_t* data, std::size_t size) const {
  std::ofstream file(file_, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  if (!file.flush()) {
    std::fprintf(stderr, "cannot write %s\n", file_.c_str());
    std::abort();
  }
}

}  // namespace ombrelay::fuzz
