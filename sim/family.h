#pragma once
// The four device families the simulator models, and their names on the command line and in
// the bench's choice of gauge.

#include <optional>
#include <string_view>

namespace ombrelay::sim {

enum class Family { Keld, Quill, Morlin, KeldPlus };

// "keld", "quill", "morlin" or "keld_plus", in any case; nothing for any other text.
std::optional<Family> FamilyFromName(std::string_view name);
std::string_view FamilyName(Family family);

}  // namespace ombrelay::sim
