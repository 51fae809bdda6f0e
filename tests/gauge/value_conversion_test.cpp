#include "gauge/value_conversion.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <string>

#include "calibration/calibration_tables.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "tests/support/sim_bench.h"

namespace ombrelay {
namespace {

using Bytes4 = std::array<std::uint8_t, 4>;
using Lines = std::vector<std::string>;

Bytes4 HexToBytes(const std::string& hex) {
  Bytes4 bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<std::uint8_t>(std::stoul(hex.substr(2 * i, 2), nullptr, 16));
  }
  return bytes;
}

double Decode(const Bytes4& b) {
  return GaugeFloattoDouble(b[0], b[1], b[2], b[3]);
}

TEST(GaugeFloat, TheDocumentedValuesBothWays) {
  const std::pair<double, std::string> table[] = {{1.0, "81000000"},   {-1.0, "81800000"},
                                                  {0.5, "80000000"},   {100.0, "87480000"},
                                                  {-0.25, "7F800000"}, {0.1, "7D4CCCCD"}};
  for (const auto& [value, hex] : table) {
    EXPECT_EQ(DoubletoGaugeFloat(value), hex) << value;
    EXPECT_NEAR(Decode(HexToBytes(hex)), value, std::fabs(value) * 0x1p-24) << hex;
  }
  EXPECT_EQ(DoubletoGaugeFloat(0.0), "7027C5AC");
  EXPECT_EQ(DoubletoGaugeFloat(-0.0), "7027C5AC");
  // No zero in the format: four zero bytes carry the implied bit.
  EXPECT_DOUBLE_EQ(GaugeFloattoDouble(0, 0, 0, 0), 0x1p-129);
  EXPECT_EQ(FormatThreeDecimals(GaugeFloattoDouble(0, 0, 0, 0)), "0");
  EXPECT_THROW(DoubletoGaugeFloat(std::ldexp(1.0, 130)), RuntimeError);
  EXPECT_THROW(DoubletoGaugeFloat(INFINITY), RuntimeError);
  EXPECT_EQ(ByteHexString(10), "0A");
  EXPECT_EQ(ByteHexString(0x100), "100");
}

TEST(GaugeFloat, StaysNormalisedAroundPowersOfTwo) {
  for (int k = -100; k <= 100; ++k) {
    const double power = std::ldexp(1.0, k);
    // Just below the power, far enough that it rounds up onto it, at it, and just above.
    for (const double magnitude : {std::nextafter(power, 0.0), power * (1.0 - 0x1p-26),
                                   power * (1.0 - 0x1p-24), power, power * (1.0 + 0x1p-30)}) {
      for (const double value : {magnitude, -magnitude}) {
        const std::string hex = DoubletoGaugeFloat(value);
        ASSERT_EQ(hex.size(), 8U) << value;
        const Bytes4 bytes = HexToBytes(hex);
        const double decoded = Decode(bytes);
        EXPECT_EQ((bytes[1] & 0x80) != 0, value < 0) << hex;
        // The mantissa lies in [0.5, 1) of the stated exponent.
        const double fraction = std::fabs(decoded) / std::ldexp(1.0, bytes[0] - 128);
        EXPECT_GE(fraction, 0.5) << hex;
        EXPECT_LT(fraction, 1.0) << hex;
        EXPECT_LE(std::fabs(decoded - value), std::fabs(value) * 0x1p-23) << value << " " << hex;
      }
    }
  }
}

class TransferCalDataTest : public ::testing::Test {
 protected:
  TransferCalDataTest() { CalInit(); }

  testing::SimBench clean{std::nullopt};  // the shared state, reset before and after

  static void Put(std::size_t position, std::initializer_list<std::uint8_t> bytes) {
    for (const std::uint8_t byte : bytes)
      g_abCalData[position++] = byte;
  }
  static std::vector<std::string> Values(int record, std::initializer_list<int> slots) {
    std::vector<std::string> values;
    for (const int slot : slots)
      values.push_back(g_atCalParameters[record].atFields[slot].sValue);
    return values;
  }
};

TEST_F(TransferCalDataTest, KeldRecordByteOrderHighFirst) {
  g_iDFType = KELD;
  Put(0, {0x7D, 0x4C, 0xCC, 0xCD});  // 0.1
  Put(4, {0x81, 0x00, 0x00, 0x00});  // 1.0
  Put(8, {0xE4, 0xA8});              // -7000
  Put(11, {0xFF, 0x80, 0x7F});
  Put(14, {0x00, 0x10});
  Put(21, {0x50, 0x14, 0x50, 0x15});
  Put(19, {0x56, 0x22});
  g_atCalParameters[1].atFields[15].sValue = "untouched";
  TransferCalDatatoTable();
  EXPECT_EQ(Values(1, {0, 1, 2, 3, 4, 5, 6, 8, 9, 14, 15}),
            (Lines{"0.1", "1", "-7000", "-1", "-128", "127", "16", "20500", "20501", "22050",
                   "untouched"}));
  EXPECT_EQ(Values(0, {0}), Lines{"20451"});  // other records untouched
}

TEST_F(TransferCalDataTest, MorlinRecordFloatsAndOddTypes) {
  g_iDFType = MORLIN;
  Put(16, {0x93, 0x09, 0x2C, 0x94});  // 280932.625
  Put(30, {0xF6});
  // U1 stands in no table of today; a field given it decodes one byte. Unknown types are skipped.
  g_atCalParameters[0].atFields[10].sDataType = "U1";
  Put(24, {0xC8});
  g_atCalParameters[0].atFields[9].sDataType = "X4";
  TransferCalDatatoTable();
  EXPECT_EQ(Values(0, {7, 10, 9, 15}), (Lines{"280932.625", "200", "64", "-10"}));
}

TEST_F(TransferCalDataTest, SecondMapRepeatsTheSlotBefore) {
  g_iDFType = KELD;
  g_bUseDataflashMap2 = true;
  Put(0, {0x4F, 0xE3});  // record 0 slot 0: 20451
  Put(28, {0x03, 0x7F, 0x01});
  TransferCalDatatoTable();
  EXPECT_EQ(Values(0, {0, 13, 14, 15}), (Lines{"20451", "3", "3", "3"}));

  // Once the fields belong to the calibration data they read their own bytes.
  g_atCalParameters[0].atFields[14].bInCalData = true;
  g_atCalParameters[0].atFields[15].bInCalData = true;
  TransferCalDatatoTable();
  EXPECT_EQ(Values(0, {14, 15}), (Lines{"127", "1"}));
}

}  // namespace
}  // namespace ombrelay
