#include "gauge/value_conversion.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "gauge/calibration_layout.h"
#include "shell/numeric.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr int kMantissaBits = 24;
constexpr int kExponentBias = 128;
constexpr std::uint8_t kSignBit = 0x80;
// The format has no zero; this is the nearest thing it is given instead.
constexpr double kZeroStandIn = 0.00001;

std::uint8_t CalByte(std::size_t position) {
  return g_abCalData.at(position);
}

std::string SignedByteText(std::uint8_t byte) {
  return byte < 128 ? std::to_string(byte) : "-" + std::to_string(256 - byte);
}

std::string CalValueText(const std::string& type, std::size_t p) {
  if (type == "U1") return std::to_string(CalByte(p));
  if (type == "U2") return std::to_string(CalByte(p) * 256 + CalByte(p + 1));
  if (type == "I1") return SignedByteText(CalByte(p));
  if (type == "I2") {
    std::int16_t word = 0;
    JoinBytestoWord(CalByte(p), CalByte(p + 1), word);
    return std::to_string(word);
  }
  return FormatThreeDecimals(
      GaugeFloattoDouble(CalByte(p), CalByte(p + 1), CalByte(p + 2), CalByte(p + 3)));
}

bool IsCalDataType(const std::string& type) {
  return type == "U1" || type == "U2" || type == "I1" || type == "I2" || type == "F4";
}

}  // namespace

void TransferCalDatatoTable() {
  MODBlock& record = g_atCalParameters.at(static_cast<std::size_t>(CalBlockIndex()));
  const std::int16_t base = CalDataBase();
  const auto lastSlot = std::clamp<std::int32_t>(record.lFieldCount, -1, kMODFieldSlots - 1);

  // Type and offset of the slot last decoded: a field outside the calibration data under the
  // second map takes them over and so repeats that slot's value.
  std::string type;
  std::string offset;
  for (std::int32_t slot = 0; slot <= lastSlot; ++slot) {
    MODField& field = record.atFields[static_cast<std::size_t>(slot)];
    if (!g_bUseDataflashMap2 || field.bInCalData) {
      type = field.sDataType;
      offset = field.sOffset;
    }
    if (!IsCalDataType(type)) continue;
    const auto position = static_cast<std::size_t>(TextToInt16(offset) + base);
    field.sValue = CalValueText(type, position);
  }
}

double GaugeFloattoDouble(std::uint8_t byte0, std::uint8_t byte1, std::uint8_t byte2,
                          std::uint8_t byte3) {
  const bool negative = (byte1 & kSignBit) != 0;
  const double mantissa = (byte1 | kSignBit) * 65536.0 + byte2 * 256.0 + byte3;
  const double magnitude = std::ldexp(mantissa, byte0 - kExponentBias - kMantissaBits);
  return negative ? -magnitude : magnitude;
}

std::string DoubletoGaugeFloat(double value) {
  if (!std::isfinite(value)) throw RuntimeError(kOverflow);
  if (value == 0.0) value = kZeroStandIn;
  const bool negative = value < 0.0;
  // frexp gives the exponent exactly, where a quotient of logarithms can land just under a
  // whole number at a power of two and leave the mantissa one bit too long.
  int exponent = 0;
  const double fraction = std::frexp(std::fabs(value), &exponent);
  auto mantissa = static_cast<std::uint32_t>(RoundHalfEven(std::ldexp(fraction, kMantissaBits)));
  if (mantissa == (1U << kMantissaBits)) {
    // Rounded up to the next power of two: renormalise.
    mantissa >>= 1;
    ++exponent;
  }
  const std::uint8_t exponentByte = ToByte(exponent + kExponentBias);

  auto byte1 = static_cast<std::uint8_t>(mantissa >> 16);
  if (!negative) byte1 &= static_cast<std::uint8_t>(~kSignBit);
  return ByteHexString(exponentByte) + ByteHexString(byte1) +
         ByteHexString((mantissa >> 8) & 0xFFU) + ByteHexString(mantissa & 0xFFU);
}

std::string ByteHexString(std::uint32_t value) {
  return PadLeftZeros(Hex(value), 2);
}

}  // namespace ombrelay
