#include "shell/numeric.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace ombrelay {
namespace {

template <typename Int>
Int RoundedInRange(double value) {
  const double rounded = RoundHalfEven(value);
  if (!(rounded >= static_cast<double>(std::numeric_limits<Int>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<Int>::max()))) {
    throw RuntimeError(kOverflow);
  }
  return static_cast<Int>(rounded);
}

}  // namespace

double RoundHalfEven(double value) {
  if (!std::isfinite(value)) return value;
  const double floor = std::floor(value);
  const double diff = value - floor;
  if (diff < 0.5) return floor;
  if (diff > 0.5) return floor + 1.0;
  return std::fmod(floor, 2.0) == 0.0 ? floor : floor + 1.0;
}

std::int16_t ToInt16(double value) {
  return RoundedInRange<std::int16_t>(value);
}
std::int32_t ToInt32(double value) {
  return RoundedInRange<std::int32_t>(value);
}
std::uint8_t ToByte(double value) {
  return RoundedInRange<std::uint8_t>(value);
}

double TextToDouble(std::string_view text) {
  std::string_view digits = Trim(text);
  if (!digits.empty() && digits.front() == '+') digits.remove_prefix(1);
  if (digits.empty() || digits.front() == '+') throw RuntimeError(kTypeMismatch);
  double value = 0.0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value,
                                            std::chars_format::general);
  if (error == std::errc::result_out_of_range) throw RuntimeError(kOverflow);
  if (error != std::errc() || end != digits.data() + digits.size() || !std::isfinite(value)) {
    throw RuntimeError(kTypeMismatch);
  }
  return value;
}

std::int16_t TextToInt16(std::string_view text) {
  return ToInt16(TextToDouble(text));
}

double Divide(double a, double b) {
  if (b == 0.0) throw RuntimeError(kDivisionByZero);
  return a / b;
}

std::string Hex(std::uint32_t value) {
  std::array<char, 8> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, 16);
  return ToUpper(
      std::string_view(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())));
}

std::string FormatTenths(double value) {
  std::array<char, 64> buffer{};
  const int n = std::snprintf(buffer.data(), buffer.size(), "%04.1f", std::fabs(value));
  std::string text(buffer.data(), static_cast<std::size_t>(n));
  // "-0.0" has no sign in this format; any other negative value keeps it.
  if (std::signbit(value) && text.find_first_not_of("0.") != std::string::npos) {
    text.insert(0, 1, '-');
  }
  return text;
}

std::string FormatThreeDecimals(double value) {
  // An exact half at the fourth decimal (1.0625) goes away from zero, as a displayed number
  // format rounds; every other value goes to the nearer three-decimal number of its decimal text,
  // so that 0.1 stays 0.1 rather than its binary neighbour.
  const double halves = value * 2000.0;
  const bool exactHalf = std::fma(value, 2000.0, -halves) == 0.0 && halves == std::trunc(halves) &&
                         std::fmod(halves, 2.0) != 0.0;
  double rounded = 0.0;
  if (exactHalf) {
    rounded = std::round(value * 1000.0) / 1000.0;
  } else {
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.3f", value);
    rounded = std::strtod(buffer.data(), nullptr);
  }
  return FormatShortest(rounded == 0.0 ? 0.0 : rounded);
}

std::string FormatShortest(double value) {
  std::array<char, 64> buffer{};
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  return std::string(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
}

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(" \t");
  return text.substr(first, last - first + 1);
}

std::string ToUpper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  for (;;) {
    const auto at = text.find(separator);
    pieces.emplace_back(text.substr(0, at));
    if (at == std::string_view::npos) return pieces;
    text.remove_prefix(at + 1);
  }
}

}  // namespace ombrelay
