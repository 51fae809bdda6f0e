#include "calibration/raw_capture.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "gauge/gauge_mode.h"
#include "gauge/manufacturer_access.h"
#include "gauge/manufacturer_blocks.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr std::int16_t kRawBlock = 2;
// Sent between the exit word and an output word, so the gauge sees the output word afresh.
constexpr std::int16_t kIdleWord = 1;
constexpr std::int16_t kRawOutputRequest = static_cast<std::int16_t>(0xF081);
constexpr std::uint8_t kRawOutputStatus = 1;
constexpr std::uint8_t kOffsetOutputStatus = 2;
constexpr std::int16_t kHostDelayCount = 250;

// The twelve words behind the counter and status bytes, low byte first; true where the reading
// is unsigned.
constexpr std::size_t kFirstWord = 2;
constexpr std::size_t kWordCount = 12;
constexpr std::array<bool, kWordCount> kUnsignedWord = {
    false,                      // coulomb counter
    true,  true,  true,  true,  // cells 1 to 4
    false, false, false,        // internal temperature, TS1, TS2
    false, false,               // TS3, TS4
    true,  true};               // pack and battery voltage

constexpr int kMostRepeats = 10;
constexpr int kRequestTries = 10;
constexpr int kOffsetRequestTries = 5;
constexpr int kSequenceTries = 15;

Status ReadRawBlock(MODBuffer& buffer, std::int16_t& length) {
  return ReadMODData(buffer, length, g_iTargetAddress);
}

bool WholeBlock(std::int16_t length) {
  return length == g_iRawCalDataBlockSize;
}

std::int32_t WordAt(const MODBuffer& buffer, std::size_t word) {
  const std::size_t at = kFirstWord + 2 * word;
  const auto bits = static_cast<std::uint16_t>(buffer[at] | (buffer[at + 1] << 8));
  if (kUnsignedWord[word]) return bits;
  std::int16_t value = 0;
  JoinBytestoWord(buffer[at + 1], buffer[at], value);
  return value;
}

void PutWord(MODBuffer& buffer, std::size_t word, std::int64_t value) {
  const std::size_t at = kFirstWord + 2 * word;
  const auto bits = static_cast<std::uint16_t>(value & 0xFFFF);
  buffer[at] = static_cast<std::uint8_t>(bits & 0xFF);
  buffer[at + 1] = static_cast<std::uint8_t>(bits >> 8);
}

// Every named slot, the one beyond the shown count included.
void DecodeRawBlock(const MODBuffer& buffer) {
  for (std::int16_t slot = 0; slot < kMODFieldSlots; ++slot) {
    if (!g_atMODBlocks[kRawBlock].atFields[static_cast<std::size_t>(slot)].sName.empty()) {
      DecodeMODFieldRaw(kRawBlock, slot, buffer);
    }
  }
}

// One more try at raw output: the exit word, the idle word, then the output word again.
void RestartOutput(std::int16_t outputWord, std::int32_t afterExitMs) {
  WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
  g_oPlatform->Sleep(afterExitMs);
  WriteManufacturerAccess(kIdleWord, g_iTargetAddress);
  g_oPlatform->Sleep(20);
  WriteManufacturerAccess(outputWord, g_iTargetAddress);
  g_oPlatform->Sleep(200);
}

}  // namespace

Status GatherRawCalValues(std::int16_t mode) {
  // Settings never accept fewer than one sample; without an accepted count there is nothing to
  // average, so the gauge is not asked for anything.
  if (g_iNumSamples < 1) return 1;
  MODBuffer buffer{};
  std::array<std::int32_t, kWordCount> sums{};
  const std::int16_t outputWord =
      mode == 0 ? g_iOutputCalValuesCommand : g_iOutputCalValuesforOffsetCommand;

  WriteManufacturerAccess(outputWord, g_iTargetAddress);
  g_oHost->Delay(kHostDelayCount);
  DelayMilliseconds(250);

  ProgressReport progress("Capturing raw calibration samples", g_iNumSamples);
  // The last counter starts at 0, so a first reading with counter 0 counts as a repeat.
  int samples = 0;
  int repeats = 0;
  std::uint8_t lastCounter = 0;
  std::int16_t length = 0;
  while (samples < g_iNumSamples && repeats <= kMostRepeats) {
    ReadRawBlock(buffer, length);
    if (!WholeBlock(length)) {
      WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
      g_oPlatform->Sleep(100);
      WriteManufacturerAccess(outputWord, g_iTargetAddress);
      g_oPlatform->Sleep(3);
      MsgBox("Received Wrong Number Of Bytes in Raw Cal Block : " + std::to_string(length));
      return 1;
    }
    DelayMilliseconds(100);
    if (buffer[0] != lastCounter) {
      progress.Step(++samples);
      for (std::size_t word = 0; word < kWordCount; ++word)
        sums[word] += WordAt(buffer, word);
      repeats = 0;
    } else {
      ++repeats;
    }
    lastCounter = buffer[0];
  }

  for (std::size_t word = 0; word < kWordCount; ++word) {
    const double average = RoundHalfEven(Divide(sums[word], g_iNumSamples));
    PutWord(buffer, word, static_cast<std::int64_t>(average));
  }

  if (repeats > kMostRepeats) {
    MsgBox("Unable to enter calibration mode.");
    return 1;
  }
  DecodeRawBlock(buffer);
  return 0;
}

Status RequestRawCalOutput() {
  MODBuffer buffer{};
  std::int16_t length = 0;
  WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
  WriteManufacturerAccess(kIdleWord, g_iTargetAddress);
  g_oPlatform->Sleep(100);
  WriteManufacturerAccess(g_iOutputCalValuesCommand, g_iTargetAddress);
  g_oPlatform->Sleep(3);
  ReadRawBlock(buffer, length);
  ReadRawBlock(buffer, length);

  // The gauge counts as streaming only once the counter has moved past the first readings.
  int progress = 0;
  int tries = 0;
  do {
    RestartOutput(g_iOutputCalValuesCommand, 20);
    ReadRawBlock(buffer, length);
    ++tries;
    if (progress != buffer[0]) ++progress;
  } while (!(buffer[1] == kRawOutputStatus && WholeBlock(length) && progress > 2) &&
           tries <= kRequestTries);
  return tries > kRequestTries ? 1 : 0;
}

Status RequestOffsetCalOutput() {
  MODBuffer buffer{};
  std::int16_t length = 0;
  WriteManufacturerAccess(g_iExitCalCommand, g_iTargetAddress);
  WriteManufacturerAccess(kIdleWord, g_iTargetAddress);
  g_oPlatform->Sleep(20);
  WriteManufacturerAccess(g_iOutputCalValuesforOffsetCommand, g_iTargetAddress);
  WriteManufacturerAccess(g_iOutputCalValuesforOffsetCommand, g_iTargetAddress);
  g_oPlatform->Sleep(200);
  if (ReadRawBlock(buffer, length) == 0 && buffer[1] == kOffsetOutputStatus && WholeBlock(length)) {
    return 0;
  }

  int tries = 0;
  do {
    RestartOutput(g_iOutputCalValuesforOffsetCommand, 10);
    ReadRawBlock(buffer, length);
    ++tries;
  } while (!(buffer[1] == kOffsetOutputStatus && WholeBlock(length)) &&
           tries <= kOffsetRequestTries);
  return tries > kOffsetRequestTries ? 1 : 0;
}

Status UpdateRawCalValues() {
  MODBuffer buffer{};
  std::int16_t length = 0;
  ReadRawBlock(buffer, length);
  if (!WholeBlock(length)) {
    MsgBox("Unable to read raw cal values and update display.");
    return 1;
  }
  DecodeRawBlock(buffer);
  return 0;
}

Status WaitForRawCalSequence(MODBuffer& buffer) {
  EnableCalibrationMode();
  EnableCalibrationMode();
  WriteManufacturerAccess(kRawOutputRequest, g_iTargetAddress);
  std::int16_t length = 0;
  ReadRawBlock(buffer, length);

  // First the gauge has to stream raw output at all, then a fresh reading has to arrive.
  int tries = 0;
  while (!(buffer[1] == kRawOutputStatus && WholeBlock(length)) && tries <= kSequenceTries) {
    ReadRawBlock(buffer, length);
    g_oPlatform->Sleep(50);
    g_oPlatform->PumpEvents();
    ++tries;
  }

  const std::uint8_t counter = buffer[0];
  tries = 0;
  while (!(buffer[0] != counter && WholeBlock(length)) && tries <= kSequenceTries) {
    ReadRawBlock(buffer, length);
    g_oPlatform->PumpEvents();
    g_oPlatform->Sleep(50);
    ++tries;
  }
  return 0;
}

}  // namespace ombrelay
