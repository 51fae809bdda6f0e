#include "shell/numeric.h"

#include <gtest/gtest.h>

namespace ombrelay {
namespace {

TEST(NumberRules, RoundsHalfToEvenBeforeCheckingTheRange) {
  EXPECT_EQ(RoundHalfEven(2.5), 2.0);
  EXPECT_EQ(RoundHalfEven(3.5), 4.0);
  EXPECT_EQ(RoundHalfEven(-3.5), -4.0);
  EXPECT_EQ(RoundHalfEven(-2.5), -2.0);
  EXPECT_EQ(RoundHalfEven(2.4999), 2.0);
  EXPECT_EQ(RoundHalfEven(-0.5), 0.0);

  EXPECT_EQ(ToInt16(32767.0), 32767);
  EXPECT_EQ(ToInt16(32767.4), 32767);
  EXPECT_EQ(ToInt16(-32768.5), -32768);  // ties to even: -32768
  EXPECT_EQ(ToInt16(32766.5), 32766);
  EXPECT_THROW(ToInt16(32767.5), RuntimeError);  // rounds to 32768
  EXPECT_THROW(ToInt16(-32769.0), RuntimeError);
  EXPECT_THROW(ToInt16(1e300), RuntimeError);
  EXPECT_THROW(ToByte(255.5), RuntimeError);
  EXPECT_EQ(ToByte(254.5), 254);
  EXPECT_THROW(ToByte(-1.0), RuntimeError);
  EXPECT_THROW(ToInt32(2147483648.0), RuntimeError);
  EXPECT_EQ(ToInt32(-2147483648.0), INT32_MIN);
}

TEST(NumberRules, ErrorsCarryTheirShortDescriptions) {
  const auto what = [](auto call) -> std::string {
    try {
      call();
    } catch (const RuntimeError& e) {
      return e.what();
    }
    return "no error";
  };
  EXPECT_EQ(what([] { ToInt16(40000); }), "Overflow");
  EXPECT_EQ(what([] { TextToDouble("12a"); }), "Type mismatch");
  EXPECT_EQ(what([] { Divide(1.0, 0.0); }), "Division by zero");
}

TEST(NumberRules, TextToNumberTrimsBlanksAndRejectsWhatIsNoNumber) {
  EXPECT_EQ(TextToDouble("  4000 "), 4000.0);
  EXPECT_EQ(TextToDouble("-2000"), -2000.0);
  EXPECT_EQ(TextToDouble("+12.5"), 12.5);
  EXPECT_EQ(TextToDouble("1e3"), 1000.0);
  EXPECT_EQ(TextToDouble(".5"), 0.5);
  for (const char* bad : {"", "   ", "abc", "12 34", "++1", "-", "nan", "inf", "0x10", "1,5"}) {
    EXPECT_THROW(TextToDouble(bad), RuntimeError) << bad;
  }
  EXPECT_EQ(TextToInt16(" 12.5 "), 12);
  EXPECT_EQ(TextToInt16("13.5"), 14);
  EXPECT_THROW(TextToInt16("32768"), RuntimeError);
  EXPECT_THROW(TextToDouble("1e999"), RuntimeError);
}

TEST(NumberFormats, TenthsThreeDecimalsShortestAndHex) {
  EXPECT_EQ(FormatTenths(25.3), "25.3");
  EXPECT_EQ(FormatTenths(5.0), "05.0");
  EXPECT_EQ(FormatTenths(-5.5), "-05.5");
  EXPECT_EQ(FormatTenths(0.0), "00.0");
  EXPECT_EQ(FormatTenths(-0.0), "00.0");
  EXPECT_EQ(FormatTenths(-0.04), "00.0");
  EXPECT_EQ(FormatTenths(123.45), "123.5");
  EXPECT_EQ(FormatTenths(-273.2), "-273.2");

  EXPECT_EQ(FormatThreeDecimals(0.1), "0.1");
  EXPECT_EQ(FormatThreeDecimals(1.0), "1");
  EXPECT_EQ(FormatThreeDecimals(1.23449), "1.234");
  EXPECT_EQ(FormatThreeDecimals(-2.5), "-2.5");
  EXPECT_EQ(FormatThreeDecimals(-0.0004), "0");
  EXPECT_EQ(FormatThreeDecimals(123456.0), "123456");
  // Exact halves at the fourth decimal go away from zero, whatever the digit before them; a value
  // a hair off a half goes to its nearer neighbour.
  EXPECT_EQ(FormatThreeDecimals(1.0625), "1.063");
  EXPECT_EQ(FormatThreeDecimals(1.0635), "1.063");  // binary 1.06349999...
  EXPECT_EQ(FormatThreeDecimals(0.0625), "0.063");
  EXPECT_EQ(FormatThreeDecimals(-1.0625), "-1.063");
  EXPECT_EQ(FormatThreeDecimals(2.3125), "2.313");
  EXPECT_EQ(FormatThreeDecimals(2.1875), "2.188");
  EXPECT_EQ(FormatThreeDecimals(-0.0005), "-0.001");  // binary -0.000500000000000000010...
  EXPECT_EQ(FormatShortest(25.0), "25");
  EXPECT_EQ(FormatShortest(-0.5), "-0.5");
  EXPECT_EQ(FormatShortest(25.3), "25.3");

  EXPECT_EQ(Hex(0), "0");
  EXPECT_EQ(Hex(0x0B), "B");
  EXPECT_EQ(Hex(0xABCDEF01), "ABCDEF01");
}

}  // namespace
}  // namespace ombrelay
