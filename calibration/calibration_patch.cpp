#include "calibration/calibration_patch.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "gauge/calibration_layout.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"

namespace ombrelay {
namespace {

std::size_t CalPosition(const MODField& field, int width) {
  const int position = CalDataBase() + TextToInt16(field.sOffset);
  if (position < 0 || position + width > kCalDataSize) throw RuntimeError(kSubscriptOutOfRange);
  return static_cast<std::size_t>(position);
}

}  // namespace

const MODField& CalField(std::int16_t record, std::int16_t field) {
  return g_atCalParameters.at(static_cast<std::size_t>(record))
      .atFields.at(static_cast<std::size_t>(field));
}

void PatchCalByte(const MODField& field, std::uint8_t value) {
  g_abCalData[CalPosition(field, 1)] = value;
}

void PatchCalWord(const MODField& field, std::uint8_t high, std::uint8_t low) {
  const std::array<std::uint8_t, 2> bytes = {high, low};
  PatchCalBytes(field, bytes);
}

void PatchCalBytes(const MODField& field, std::span<const std::uint8_t> bytes) {
  const std::size_t position = CalPosition(field, static_cast<int>(bytes.size()));
  std::copy(bytes.begin(), bytes.end(),
            g_abCalData.begin() + static_cast<std::ptrdiff_t>(position));
}

}  // namespace ombrelay
