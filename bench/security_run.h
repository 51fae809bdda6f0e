#pragma once
// The security panel's operations on a simulated gauge in real time, one after the other as an
// engineer clicks them: seal, unseal, full access, authentication, and a change of the Unseal
// key.

#include <cstddef>
#include <string>
#include <vector>

#include "sim/family.h"

namespace ombrelay {

struct SecurityRunResult {
  std::string operation;  // "seal", "unseal", "full_access", "authenticate" or "change_key"
  double wallMs = 0.0;
  double cpuMs = 0.0;
  // The waits the program asks for along the path: plain, pumping and the host's.
  double floorMs = 0.0;
  std::size_t busOperations = 0;
  // The mode or verdict the operation should leave.
  bool ok = false;
  std::size_t messages = 0;
};

std::vector<SecurityRunResult> RunSecurityOperations(sim::Family family, const std::string& appDir);

}  // namespace ombrelay
