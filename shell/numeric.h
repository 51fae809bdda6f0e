#pragma once
// The program's number rules: 16-bit signed arithmetic that overflows loudly, text parsed into
// numbers, rounding half to even, and the fixed number formats shown to the user.

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ombrelay {

// A run-time failure of the number rules. what() is the short description the error traps
// show: "Overflow", "Type mismatch", "Division by zero" or "Subscript out of range".
class RuntimeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

inline constexpr const char* kOverflow = "Overflow";
inline constexpr const char* kTypeMismatch = "Type mismatch";
inline constexpr const char* kDivisionByZero = "Division by zero";
inline constexpr const char* kSubscriptOutOfRange = "Subscript out of range";

// Nearest whole number, ties to the even neighbour.
double RoundHalfEven(double value);

// Round half to even, then check the range; throws "Overflow" when it does not fit.
std::int16_t ToInt16(double value);
std::int32_t ToInt32(double value);
std::uint8_t ToByte(double value);

// A number text with blanks around it trimmed. Empty or not a number throws "Type mismatch".
double TextToDouble(std::string_view text);
// TextToDouble, then ToInt16.
std::int16_t TextToInt16(std::string_view text);

// a / b; throws "Division by zero" when b is 0.
double Divide(double a, double b);

// Upper-case hexadecimal without leading zeros, "0" for zero.
std::string Hex(std::uint32_t value);

// The number format "00.0": at least two integer digits and one decimal, "-05.5" for -5.5.
std::string FormatTenths(double value);
// The number format "########0.000" followed by the shortest decimal text of the result. An
// exact half at the fourth decimal rounds away from zero: 1.0625 gives "1.063".
std::string FormatThreeDecimals(double value);
// The shortest decimal text that reads back as the same double: "25", "25.3", "-0.5".
std::string FormatShortest(double value);

// Blanks trimmed from both ends.
std::string_view Trim(std::string_view text);
// ASCII upper case.
std::string ToUpper(std::string_view text);
// The pieces between the separators, empty ones included: "a,,b" gives "a", "", "b".
std::vector<std::string> Split(std::string_view text, char separator);

}  // namespace ombrelay
