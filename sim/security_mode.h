#pragma once
// The gauge's security modes, coded as the two low bits of byte 1 of its Operation Status.

#include <cstdint>

namespace ombrelay::sim {

enum class SecurityMode : std::uint8_t { FullAccess = 1, Unsealed = 2, Sealed = 3 };

}  // namespace ombrelay::sim
