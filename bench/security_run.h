#pragma once
// The security panel's operations on a simulated gauge in real time, one after the other as an
// engineer clicks them: seal, unseal, full access, authentication, and a change of the Unseal
// key.

#include <string>
#include <vector>

#include "bench/run_measures.h"
#include "sim/family.h"

namespace ombrelay {

struct SecurityRunResult {
  std::string operation;  // "seal", "unseal", "full_access", "authenticate" or "change_key"
  SliceMeasures measures;
  // The mode or verdict the operation should leave.
  bool ok = false;
};

std::vector<SecurityRunResult> RunSecurityOperations(sim::Family family, const std::string& appDir);

}  // namespace ombrelay
