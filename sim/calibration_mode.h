#pragma once
// Calibration mode: one ManufacturerAccess word switches it on and, sent again, off; the exit
// word only ends the raw output that the mode streams (see RawOutput). The gauge shows the
// mode as a flag in its manufacturing status block and, on KELD_PLUS, in bit 15 of a Smart
// Battery word. A bench can make the gauge refuse the mode, or stall the flag it reports.

#include <cstdint>
#include <optional>

#include "sim/command_set.h"
#include "sim/family.h"
#include "sim/manufacturer_access.h"

namespace ombrelay::sim {

class CalibrationMode {
 public:
  static constexpr std::uint16_t kSwitchWord = 0x002D;
  // KELD_PLUS only.
  static constexpr std::uint8_t kFlagWordCommand = 0x74;
  static constexpr std::uint16_t kFlagWordBit = 0x8000;

  // Installs the switch word, and on KELD_PLUS the flag word.
  CalibrationMode(Family family, CommandSet& commands, ManufacturerAccess& access);
  CalibrationMode(const CalibrationMode&) = delete;
  CalibrationMode& operator=(const CalibrationMode&) = delete;

  bool Active() const { return active_; }
  // What the gauge reports: the mode, or while stalled the value the flag had then.
  bool Flag() const { return stalledFlag_.value_or(active_); }

  // While refusing, the switch word does nothing.
  void SetRefusing(bool refusing) { refusing_ = refusing; }
  // While stalled, the reported flag keeps the value it has now, whatever the mode does.
  void SetFlagStalled(bool stalled);

  // The manufacturing status block: bit 7 of byte 1 is the flag; other bits are set as well.
  Bytes ManufacturingStatusBlock() const;
  // The KELD_PLUS word: bit 15 is the flag; other bits are set as well.
  std::uint16_t FlagWord() const;

 private:
  bool active_ = false;
  bool refusing_ = false;
  std::optional<bool> stalledFlag_;
};

}  // namespace ombrelay::sim
