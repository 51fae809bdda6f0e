#pragma once
// The calibration dataflash in numbers: the local copy g_abCalData decoded into the text values
// of g_atCalParameters, and the gauge's own four-byte floating-point format.
//
// The gauge float is byte 0 the exponent biased by 128, then a 24-bit mantissa most significant
// byte first whose top bit is implied (the sign stands in its place): the value is
// sign * mantissa * 2^-24 * 2^(byte 0 - 128), the mantissa in [0.5, 1). There is no zero.

#include <cstdint>
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

// Upper-case hex, at least two digits.
std::string ByteHexString(std::uint32_t value);

}  // namespace ombrelay
