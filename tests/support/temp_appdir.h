#pragma once
// A throw-away copy of the shipped application directory that a test may change.

#include <filesystem>
#include <string>

namespace ombrelay::testing {

class TempAppDir {
 public:
  // A copy of the shipped application directory; empty when copyShipped is false.
  explicit TempAppDir(bool copyShipped = true);
  ~TempAppDir();
  TempAppDir(const TempAppDir&) = delete;
  TempAppDir& operator=(const TempAppDir&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  void Write(const std::string& name, const std::string& content) const;
  void Remove(const std::string& name) const;

 private:
  std::filesystem::path path_;
};

}  // namespace ombrelay::testing
