// ombrelay-security-benchmark: the security panel's operations on a simulated gauge of each
// family, in real time on the console platform. One JSON object per family and operation: how
// close the run comes to the waits the program must make, how little CPU it burns doing so, and
// whether the gauge ended in the mode or gave the verdict that was asked for.

#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

#include "bench/security_run.h"
#include "security/sha1_hex.h"

int main(int argc, char* argv[]) {
  const std::string appDir = argc > 1 ? argv[1] : OMBRELAY_APPDIR;
  // libcrypto loads its providers on the first digest of a process, once a session: done here,
  // so that it does not count against the first family's unseal.
  ombrelay::SHA1_BytesHexHash({});
  bool clean = true;
  for (const ombrelay::sim::Family family :
       {ombrelay::sim::Family::Keld, ombrelay::sim::Family::Quill, ombrelay::sim::Family::Morlin,
        ombrelay::sim::Family::KeldPlus}) {
    for (const ombrelay::SecurityRunResult& run : ombrelay::RunSecurityOperations(family, appDir)) {
      nlohmann::ordered_json line = {{"family", ombrelay::sim::FamilyName(family)},
                                     {"operation", run.operation}};
      line.update(ombrelay::SliceFields(run.measures));
      line["ok"] = run.ok;
      std::cout << line.dump() << std::endl;
      clean = clean && run.ok && run.measures.messages == 0;
    }
  }
  return clean ? 0 : 1;
}
