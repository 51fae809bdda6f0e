#include "cli/confirmation.h"

#include <istream>
#include <ostream>

namespace ombrelay::cli {

bool ConfirmChange(const std::string& what, bool yes, Environment& env) {
  if (yes || !env.inIsTerminal) return true;
  env.err << "ombrelay: about to " << what << ". Continue? [y/N] " << std::flush;
  std::string answer;
  std::getline(env.in, answer);
  return answer == "y" || answer == "Y" || answer == "yes" || answer == "Yes";
}

}  // namespace ombrelay::cli
