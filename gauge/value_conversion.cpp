#include "gauge/value_conversion.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>

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
constexpr auto kCalSize = static_cast<std::size_t>(kCalDataSize);

// The longest hex or string value: one row.
constexpr std::size_t kMaxCountedSize = 32;
constexpr std::uint8_t kFirstPrintable = 0x20;
constexpr std::uint8_t kLastPrintable = 0x7E;

std::uint8_t ByteAt(std::span<const std::uint8_t> bytes, std::size_t i) {
  if (i >= bytes.size()) throw std::out_of_range("dataflash value past its bytes");
  return bytes[i];
}

std::string SignedByteText(std::uint8_t byte) {
  return byte < 128 ? std::to_string(byte) : "-" + std::to_string(256 - byte);
}

// n of "Hn" or "Sn": 1 to kMaxCountedSize; 0 for anything else.
std::size_t CountedSize(const std::string& type) {
  if (type.size() < 2 || type.size() > 3) return 0;
  std::size_t size = 0;
  for (std::size_t i = 1; i < type.size(); ++i) {
    if (type[i] < '0' || type[i] > '9') return 0;
    size = size * 10 + static_cast<std::size_t>(type[i] - '0');
  }
  return size <= kMaxCountedSize ? size : 0;
}

std::string HexValueText(std::span<const std::uint8_t> bytes, std::size_t size) {
  std::string text = "0x";
  for (std::size_t i = 0; i < size; ++i)
    text += ByteHexString(ByteAt(bytes, i));
  return text;
}

// A string keeps its length in its first byte, as the gauge's block answers do; what does not
// print stands as \xHH, so that the text survives any file it is written to.
std::string StringValueText(std::span<const std::uint8_t> bytes, std::size_t size) {
  const std::size_t count = std::min<std::size_t>(ByteAt(bytes, 0), size - 1);
  std::string text;
  for (std::size_t i = 1; i <= count; ++i) {
    const std::uint8_t byte = ByteAt(bytes, i);
    if (byte >= kFirstPrintable && byte <= kLastPrintable) {
      text += static_cast<char>(byte);
    } else {
      text += "\\x" + ByteHexString(byte);
    }
  }
  return text;
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
    field.sValue = DataflashValueText(
        type, std::span<const std::uint8_t>(g_abCalData).subspan(std::min(position, kCalSize)));
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

std::optional<std::size_t> DataflashValueSize(const std::string& type) {
  if (type == "U1" || type == "I1") return 1;
  if (type == "U2" || type == "I2") return 2;
  if (type == "F4") return 4;
  const std::size_t counted = CountedSize(type);
  if (counted != 0 && (type[0] == 'H' || type[0] == 'S')) return counted;
  return std::nullopt;
}

std::string DataflashValueText(const std::string& type, std::span<const std::uint8_t> bytes) {
  if (type == "U1") return std::to_string(ByteAt(bytes, 0));
  if (type == "U2") return std::to_string(ByteAt(bytes, 0) * 256 + ByteAt(bytes, 1));
  if (type == "I1") return SignedByteText(ByteAt(bytes, 0));
  if (type == "I2") {
    std::int16_t word = 0;
    JoinBytestoWord(ByteAt(bytes, 0), ByteAt(bytes, 1), word);
    return std::to_string(word);
  }
  if (type == "F4") {
    return FormatThreeDecimals(
        GaugeFloattoDouble(ByteAt(bytes, 0), ByteAt(bytes, 1), ByteAt(bytes, 2), ByteAt(bytes, 3)));
  }
  const std::optional<std::size_t> size = DataflashValueSize(type);
  if (!size) return {};
  return type[0] == 'H' ? HexValueText(bytes, *size) : StringValueText(bytes, *size);
}

std::string ByteHexString(std::uint32_t value) {
  return PadLeftZeros(Hex(value), 2);
}

}  // namespace ombrelay
