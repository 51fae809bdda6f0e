#include "tests/support/temp_appdir.h"

#include <fstream>
#include <random>

namespace ombrelay::testing {

TempAppDir::TempAppDir(bool copyShipped) {
  std::random_device seed;
  path_ = std::filesystem::temp_directory_path() /
          ("ombrelay-appdir-" + std::to_string(seed()) + std::to_string(seed()));
  std::filesystem::create_directories(path_ / "plugins");
  if (copyShipped) {
    std::filesystem::copy(OMBRELAY_SOURCE_APPDIR, path_,
                          std::filesystem::copy_options::recursive |
                              std::filesystem::copy_options::overwrite_existing);
  }
}

TempAppDir::~TempAppDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void TempAppDir::Write(const std::string& name, const std::string& content) const {
  const auto file = path_ / name;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << content;
}

void TempAppDir::Remove(const std::string& name) const {
  std::filesystem::remove(path_ / name);
}

}  // namespace ombrelay::testing
