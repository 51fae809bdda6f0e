// ombrelay-calibration-benchmark: every calibration of the panel on a simulated gauge of each
// family, in real time on the console platform. One JSON object per family and calibration: how
// close its button press comes to the waits the program must make, how little CPU it burns doing
// so, and how well the calibrated gauge then agrees with what the bench applies.

#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

#include "bench/calibration_run.h"

int main(int argc, char* argv[]) {
  const std::string appDir = argc > 1 ? argv[1] : OMBRELAY_APPDIR;
  bool clean = true;
  for (const ombrelay::sim::Family family :
       {ombrelay::sim::Family::Keld, ombrelay::sim::Family::Quill, ombrelay::sim::Family::Morlin,
        ombrelay::sim::Family::KeldPlus}) {
    const ombrelay::CalibrationRun run = ombrelay::RunCalibrations(family, appDir);
    for (const ombrelay::CalibrationRow& row : run.rows) {
      nlohmann::ordered_json line = {{"family", ombrelay::sim::FamilyName(family)},
                                     {"calibration", row.calibration}};
      line.update(ombrelay::SliceFields(row.measures));
      line.update(row.errors);
      std::cout << line.dump() << std::endl;
      clean = clean && row.done;
    }
    clean = clean && run.messages == 0;
  }
  return clean ? 0 : 1;
}
