// Runs a fuzz target once over each file named, and over each file in each folder named, so that
// an ordinary build replays the corpora: a finding crashes the run as it did the fuzzer.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void Replay(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    std::fprintf(stderr, "cannot read %s\n", path.c_str());
    std::exit(1);
  }
  const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file),
                                        std::istreambuf_iterator<char>()};
  std::printf("%s: %zu bytes\n", path.c_str(), bytes.size());
  std::fflush(stdout);
  LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  std::size_t replayed = 0;
  for (int i = 1; i < argc; ++i) {
    const std::filesystem::path named = argv[i];
    std::vector<std::filesystem::path> files;
    if (std::filesystem::is_directory(named)) {
      for (const auto& entry : std::filesystem::directory_iterator(named))
        if (entry.is_regular_file()) files.push_back(entry.path());
      std::ranges::sort(files);
    } else {
      files.push_back(named);
    }
    for (const auto& file : files)
      Replay(file);
    replayed += files.size();
  }
  if (replayed == 0) {
    std::fprintf(stderr, "no input to replay\n");
    return 1;
  }
  return 0;
}
