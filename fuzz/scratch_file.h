#pragma once
// A file in a folder of this process's own, for the fuzzers whose input is a file the program
// reads by its path. The folder goes when the process ends.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace ombrelay::fuzz {

class ScratchFile {
 public:
  explicit ScratchFile(const std::string& name);
  ~ScratchFile();
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  // Replaces the file's content; aborts when it cannot, as nothing can be tested then.
  void Write(const std::uint8_t* data, std::size_t size) const;
  std::string Path() const { return file_.string(); }
  std::string Folder() const { return folder_.string(); }

 private:
  std::filesystem::path folder_;
  std::filesystem::path file_;
};

}  // namespace ombrelay::fuzz
