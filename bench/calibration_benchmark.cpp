// ombrelay-calibration-benchmark: a full voltage and temperature calibration on a simulated
// gauge of each family, in real time on the console platform. One JSON object per family:
// how close the run comes to the waits the program must make, how little CPU it burns doing
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
    const ombrelay::CalibrationRunResult run = ombrelay::RunCalibration(family, appDir);
    const auto orNull = [](const std::optional<double>& value) {
      return value ? nlohmann::json(*value) : nlohmann::json(nullptr);
    };
    nlohmann::ordered_json line = {{"family", ombrelay::sim::FamilyName(family)}};
    line.update(ombrelay::SliceFields(run.measures));
    line["max_voltage_error_mv"] = orNull(run.maxVoltageErrorMv);
    line["max_temperature_error_c"] = orNull(run.maxTemperatureErrorC);
    std::cout << line.dump() << std::endl;
    clean = clean && run.measures.messages == 0;
  }
  return clean ? 0 : 1;
}
