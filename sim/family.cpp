#include "sim/family.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace ombrelay::sim {
namespace {

constexpr std::array<std::pair<Family, std::string_view>, 4> kNames = {{
    {Family::Keld, "keld"},
    {Family::Quill, "quill"},
    {Family::Morlin, "morlin"},
    {Family::KeldPlus, "keld_plus"},
}};

bool SameIgnoringCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) ==
           std::tolower(static_cast<unsigned char>(y));
  });
}

}  // namespace

std::optional<Family> FamilyFromName(std::string_view name) {
  for (const auto& [family, known] : kNames) {
    if (SameIgnoringCase(name, known)) return family;
  }
  return std::nullopt;
}

std::string_view FamilyName(Family family) {
  for (const auto& [known, name] : kNames) {
    if (known == family) return name;
  }
  return {};
}

}  // namespace ombrelay::sim
