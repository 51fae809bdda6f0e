#pragma once
// The platforms' pseudo-random numbers in [0, 1), made from whole random steps: floating-point
// generators may round up to 1.

#include <cstdint>

namespace ombrelay {

// 24 random bits give every float in [0, 1) that a float can hold evenly spaced, and never 1.
inline constexpr std::uint32_t kUnitRandomSteps = 1U << 24;

// step is below kUnitRandomSteps.
inline float UnitRandom(std::uint32_t step) {
  return static_cast<float>(step) / static_cast<float>(kUnitRandomSteps);
}

}  // namespace ombrelay
