// The sense resistor: the stored current gain scaled by known over measured current, and the
// capacity gain that follows from it, both as gauge floats.

#include <array>
#include <string>

#include "calibration/calibration_targets.h"
#include "calibration/current_pack_calibration.h"
#include "gauge/calibration_dataflash.h"
#include "gauge/measurement_reads.h"
#include "gauge/value_conversion.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kSBSCurrent = 10;
constexpr double kCapacityPerCurrentGain = 298261.632;
constexpr double kNoCurrent = 0.005;

// The four bytes of a gauge float, in the order of its digits.
std::array<std::uint8_t, 4> GaugeFloatBytes(double value) {
  const std::string digits = DoubletoGaugeFloat(value);
  std::array<std::uint8_t, 4> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<std::uint8_t>(std::stoi(digits.substr(2 * i, 2), nullptr, 16));
  return bytes;
}

}  // namespace

Status CalibrateSenseResistor(const std::string& actual) {
  const std::optional<std::int16_t> word = ReadSignedWord(kSBSCurrent);
  if (!word) {
    MsgBox(
        "Unable to read current attempting current calibration. Current calibration was not "
        "performed.");
    return 1;
  }
  const double measured = *word;
  const double gain = TextToDouble(CalTarget(kCurrentGainFields).sValue);
  const double known = TextToDouble(actual);
  if (measured > -kNoCurrent && measured < kNoCurrent) {
    MsgBox("Please source or sink current. Measured current is low.");
    return 1;
  }
  const double newGain = known * gain / measured;
  const double capacityGain = newGain * kCapacityPerCurrentGain;
  std::array<std::uint8_t, 4> gainBytes{};
  std::array<std::uint8_t, 4> capacityBytes{};
  try {
    gainBytes = GaugeFloatBytes(newGain);
    capacityBytes = GaugeFloatBytes(capacityGain);
  } catch (const RuntimeError&) {
    // A stored gain that is itself far off can lead here; nothing is written.
    MsgBox("The new sense resistor gain " + FormatShortest(newGain) +
           " cannot be stored in the gauge's number format. Current calibration was not "
           "performed.");
    return 1;
  }
  PatchCalBytes(CalTarget(kCurrentGainFields), gainBytes);
  PatchCalBytes(CalTarget(kCapacityGainFields), capacityBytes);
  if (WriteCalDataflash() != 0) {
    MsgBox("Error writing Sense Resistor values to Dataflash. Please ensure device is not sealed.");
    return 1;
  }
  return 0;
}

}  // namespace ombrelay
