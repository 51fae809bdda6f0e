#pragma once
// Where each calibration of current and pack voltage keeps its value: a field of the record
// that describes this device's calibration data (see CalBlockIndex).

#include <array>
#include <cstdint>

#include "calibration/calibration_patch.h"
#include "gauge/calibration_layout.h"
#include "shell/shared_state.h"

namespace ombrelay {

// The field index in record 0 (MORLIN, KELD_PLUS, and any family under g_bUseDataflashMap2),
// record 1 (KELD) and record 2 (QUILL).
using TargetFields = std::array<std::int16_t, kCalParameterRecords>;

inline constexpr TargetFields kCCOffsetFields = {8, 2, 7};
inline constexpr TargetFields kBoardOffsetFields = {10, 6, 8};
inline constexpr TargetFields kPackGainFields = {4, 14, 6};
inline constexpr TargetFields kCurrentGainFields = {6, 0, 0};
inline constexpr TargetFields kCapacityGainFields = {7, 1, 1};

inline const MODField& CalTarget(const TargetFields& fields) {
  const std::int16_t record = CalBlockIndex();
  return CalField(record, fields.at(static_cast<std::size_t>(record)));
}

}  // namespace ombrelay
