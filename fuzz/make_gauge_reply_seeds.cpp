// Writes one gauge-reply seed per family into the folder given, from the simulator's sample
// gauges, so that start-up succeeds and the calibration runs to its end. Prints the boxes each
// run showed and whether the calibration's done mark came.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "fuzz/sample_replies.h"

int main(int argc, char** argv) {
  using namespace ombrelay;
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  for (const sim::Family family :
       {sim::Family::Keld, sim::Family::Quill, sim::Family::Morlin, sim::Family::KeldPlus}) {
    const fuzz::SampleRun run = fuzz::RecordSampleRun(family);
    const std::string name = std::string(sim::FamilyName(family)) + "-calibration";
    std::ofstream(std::filesystem::path(argv[1]) / name, std::ios::binary)
        .write(reinterpret_cast<const char*>(run.replies.data()),
               static_cast<std::streamsize>(run.replies.size()));
    std::printf("%s: %zu bytes, %s\n", name.c_str(), run.replies.size(),
                run.calibrated ? "calibrated" : "not calibrated");
    for (const RecordedMessage& message : run.messages)
      std::printf("  box: %s\n", message.text.c_str());
  }
  return 0;
}
