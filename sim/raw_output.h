#pragma once
// Raw output: the stream of converter readings that a calibration samples. One ManufacturerAccess
// word starts it with status byte 1, another with status byte 2 (the coulomb counter's input
// shorted, for its offset); the exit word of calibration mode stops it. While it streams, the
// manufacturer data command answers the raw block, low byte first, with a rolling counter that
// marks each new reading. A bench can stall the counter.

#include <cstddef>
#include <cstdint>
#include <optional>

#include "sim/calibration_mode.h"
#include "sim/clock.h"
#include "sim/command_set.h"
#include "sim/manufacturer_access.h"
#include "sim/measurement_reports.h"
#include "sim/selected_block.h"

namespace ombrelay::sim {

class RawOutput {
 public:
  static constexpr std::uint16_t kStartWord = 0xF081;
  static constexpr std::uint16_t kStartForOffsetWord = 0xF082;
  static constexpr std::uint16_t kStopWord = 0xF080;
  static constexpr std::uint8_t kRawStatus = 1;
  static constexpr std::uint8_t kOffsetStatus = 2;
  static constexpr std::size_t kBlockLength = 26;
  // A new reading every 250 ms of the gauge's clock. The counter runs on the clock whether the
  // gauge streams or not, from 1 to 255 and round to 1 again: it never reads 0.
  static constexpr std::int64_t kReadingPeriodMs = 250;

  // Installs the three words; the start words select the raw block on data.
  RawOutput(ManufacturerAccess& access, SelectedBlock& data, const Clock& clock,
            const MeasurementReports& measurements);
  RawOutput(const RawOutput&) = delete;
  RawOutput& operator=(const RawOutput&) = delete;

  // 1 or 2 while streaming, 0 when stopped.
  std::uint8_t Status() const { return status_; }
  std::uint8_t Counter() const;
  // While stalled, the counter keeps the value it has now.
  void SetCounterStalled(bool stalled);

  // Counter, status, coulomb counter, cells 1 to 4, the internal sensor and TS1 to TS4, pack,
  // battery.
  Bytes Block() const;

 private:
  void Start(SelectedBlock& data, std::uint8_t status);

  const Clock& clock_;
  const MeasurementReports& measurements_;
  std::uint8_t status_ = 0;
  std::optional<std::uint8_t> stalledCounter_;
};

}  // namespace ombrelay::sim
