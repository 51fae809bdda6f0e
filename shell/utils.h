#pragma once
// Waits that keep the user interface alive, and moving 16- and 32-bit values between the bytes
// of the bus and the signed words of the program. Split and join treat values as two's
// complement bit patterns: every input is valid and none overflows.

#include <cstdint>
#include <string>

namespace ombrelay {

// Busy waits on the platform's clock that pump events while they wait; they end early when the
// clock wraps at midnight.
void DelayMilliseconds(std::int32_t lMilliseconds);
void DelaySeconds(float sngSeconds);

// True for "0" to "9" and "A" to "F" in either case, judged by the first character.
bool IsHexDigit(const std::string& sChar);

void SplitLongtoWords(std::int32_t lValue, std::int16_t& iHigh, std::int16_t& iLow);
void SplitWordtoBytes(std::int16_t iValue, std::uint8_t& bHigh, std::uint8_t& bLow);
void JoinBytestoWord(std::uint8_t bHigh, std::uint8_t bLow, std::int16_t& iValue);
void JoinWordstoLong(std::int16_t iHigh, std::int16_t iLow, std::int32_t& lValue);

// Bit iBit (0 to 31; below 0 counts as 0) of vValue widened to 32 bits with its sign, so bits
// 16 to 31 of a negative 16-bit value read as set.
bool IsBitSet(std::int32_t vValue, std::int16_t iBit);
bool IsBitSet(std::int16_t vValue, std::int16_t iBit);

// sText with "0" in front until it is iLength characters long.
std::string PadLeftZeros(const std::string& sText, std::int16_t iLength);

}  // namespace ombrelay
