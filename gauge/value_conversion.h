#pragma once
// The calibration dataflash in numbers: the local copy g_abCalData decoded into the text values
// of g_atCalParameters, and the gauge's own four-byte floating-point format.
//
// The gauge float is byte 0 the exponent biased by 128, then a 24-bit mantissa most significant
// byte first whose top bit is implied (the sign stands in its place): the value is
// sign * mantissa * 2^-24 * 2^(byte 0 - 128), the mantissa in [0.5, 1). There is no zero.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace ombrelay {

// Decodes g_abCalData (most significant byte first) into sValue of the record CalBlockIndex
// selects: slots 0 to lFieldCount, each by its type U1, U2, I1, I2 or F4; floats to three
// decimals in their shortest text. Under g_bUseDataflashMap2 a field outside the calibration
// data repeats the slot before it. An empty or unknown type leaves the value as it is.
void TransferCalDatatoTable();

double GaugeFloattoDouble(std::uint8_t byte0, std::uint8_t byte1, std::uint8_t byte2,
                          std::uint8_t byte3);

// Eight upper-case hex digits, byte 0 first. 0 becomes 0.00001, as the format has no zero. A
// value that is not finite or whose exponent does not fit the exponent byte throws
// RuntimeError("Overflow").
std::string DoubletoGaugeFloat(double value);

// How many bytes a dataflash value of type takes: U1 and I1 one, U2 and I2 two, F4 four, Hn and
// Sn n (1 to 32). Nothing for any other type.
std::optional<std::size_t> DataflashValueSize(const std::string& type);

// The text of a dataflash value of type from its bytes, most significant first. U1, U2, I1, I2
// and F4 as the calibration table shows them; Hn as "0x" and its bytes in hex; Sn as the
// characters its first byte counts (at most n - 1), any that does not print as "\xHH". Empty
// for a type of no known size; std::out_of_range when bytes holds fewer than the type takes.
std::string DataflashValueText(const std::string& type, std::span<const std::uint8_t> bytes);

// Upper-case hex, at least two digits.
std::string ByteHexString(std::uint32_t value);

}  // namespace ombrelay
