#include "shell/utils.h"

#include <bit>

#include "shell/platform.h"
#include "shell/shared_state.h"

namespace ombrelay {

void DelayMilliseconds(std::int32_t lMilliseconds) {
  DelaySeconds(static_cast<float>(lMilliseconds) / 1000.0F);
}

void DelaySeconds(float sngSeconds) {
  Platform& platform = *g_oPlatform;
  platform.PumpingWaitStarted(sngSeconds);
  const float start = platform.SecondsSinceMidnight();
  platform.PumpEvents();
  for (float now = platform.SecondsSinceMidnight(); now < start + sngSeconds;
       now = platform.SecondsSinceMidnight()) {
    if (now < start) break;  // the clock wrapped at midnight
    platform.PumpEvents();
  }
  platform.PumpingWaitEnded();
}

bool IsHexDigit(const std::string& sChar) {
  if (sChar.empty()) return false;
  const char c = sChar.front();
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

void SplitLongtoWords(std::int32_t lValue, std::int16_t& iHigh, std::int16_t& iLow) {
  const auto bits = std::bit_cast<std::uint32_t>(lValue);
  iHigh = std::bit_cast<std::int16_t>(static_cast<std::uint16_t>(bits >> 16));
  iLow = std::bit_cast<std::int16_t>(static_cast<std::uint16_t>(bits & 0xFFFFU));
}

void SplitWordtoBytes(std::int16_t iValue, std::uint8_t& bHigh, std::uint8_t& bLow) {
  const auto bits = std::bit_cast<std::uint16_t>(iValue);
  bHigh = static_cast<std::uint8_t>(bits >> 8);
  bLow = static_cast<std::uint8_t>(bits & 0xFFU);
}

void JoinBytestoWord(std::uint8_t bHigh, std::uint8_t bLow, std::int16_t& iValue) {
  iValue = std::bit_cast<std::int16_t>(static_cast<std::uint16_t>((bHigh << 8) | bLow));
}

void JoinWordstoLong(std::int16_t iHigh, std::int16_t iLow, std::int32_t& lValue) {
  const std::uint32_t high = std::bit_cast<std::uint16_t>(iHigh);
  const std::uint32_t low = std::bit_cast<std::uint16_t>(iLow);
  lValue = std::bit_cast<std::int32_t>((high << 16) | low);
}

bool IsBitSet(std::int32_t vValue, std::int16_t iBit) {
  // Past bit 31 the widened value repeats its sign bit.
  const int bit = iBit < 0 ? 0 : (iBit > 31 ? 31 : iBit);
  return ((std::bit_cast<std::uint32_t>(vValue) >> bit) & 1U) != 0;
}

bool IsBitSet(std::int16_t vValue, std::int16_t iBit) {
  return IsBitSet(static_cast<std::int32_t>(vValue), iBit);
}

std::string PadLeftZeros(const std::string& sText, std::int16_t iLength) {
  if (static_cast<int>(sText.size()) >= iLength) return sText;
  return std::string(static_cast<std::size_t>(iLength) - sText.size(), '0') + sText;
}

}  // namespace ombrelay
