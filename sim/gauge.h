#pragma once
// A smart-battery gas gauge on the bus, as the adapter sees it: word and block transfers by
// command, bus errors it leaves behind, and the faults a bench can inject. It knows nothing of
// the program that talks to it.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "sim/bus_faults.h"
#include "sim/calibration_mode.h"
#include "sim/clock.h"
#include "sim/command_set.h"
#include "sim/converter.h"
#include "sim/dataflash.h"
#include "sim/family.h"
#include "sim/identification.h"
#include "sim/manufacturer_access.h"
#include "sim/manufacturer_data.h"
#include "sim/measurement_reports.h"
#include "sim/measurements.h"
#include "sim/pending_errors.h"
#include "sim/quill_subclasses.h"
#include "sim/raw_output.h"
#include "sim/security_exchanges.h"
#include "sim/security_mode.h"
#include "sim/selected_block.h"

namespace ombrelay::sim {

class Gauge {
 public:
  static constexpr std::int16_t kAddress = 23;
  static constexpr std::uint8_t kManufacturerAccessCommand = 0x00;
  static constexpr std::uint8_t kRelativeStateOfCharge = 0x0D;
  // Answers with what was last selected: identification, dataflash rows, a security exchange.
  static constexpr std::uint8_t kSharedDataCommand = 0x2F;
  static constexpr std::uint16_t kDefaultStateOfCharge = 80;

  Gauge(Family family, const Identity& identity, Clock& clock);
  // Its commands hold on to its parts: it stays where it was made.
  Gauge(const Gauge&) = delete;
  Gauge& operator=(const Gauge&) = delete;

  Family GetFamily() const { return family_; }
  // The time the gauge's own counters and flash timings run on.
  Clock& GetClock() const { return clock_; }

  // The bus side. Nothing, or false, is a transfer the gauge did not acknowledge.
  std::optional<std::uint16_t> ReadWord(std::uint8_t command);
  bool WriteWord(std::uint8_t command, std::uint16_t word);
  std::optional<Bytes> ReadBlock(std::uint8_t command);
  bool WriteBlock(std::uint8_t command, std::span<const std::uint8_t> data);
  // Which transfers a command takes, whatever faults are injected: a bus that carries bytes
  // tells a word from a block by the command, as a real gauge does.
  bool AnswersWordReads(std::uint8_t command) const { return commands_.AnswersWordReads(command); }
  bool TakesWordWrites(std::uint8_t command) const { return commands_.TakesWordWrites(command); }
  bool AnswersBlockReads(std::uint8_t command) const {
    return commands_.AnswersBlockReads(command);
  }
  bool TakesBlockWrites(std::uint8_t command) const { return commands_.TakesBlockWrites(command); }
  // The oldest pending bus error, taken away; 0 when none is left.
  std::int32_t TakePendingError() { return pendingErrors_.Take(); }

  // From now on a word read of command answers value.
  void SetWord(std::uint8_t command, std::uint16_t value);
  void SetIdentificationBlock(Bytes block) { identification_.SetBlock(std::move(block)); }
  const Bytes& IdentificationBlock() const { return identification_.Block(); }
  // Bus errors left behind by each identification request.
  void SetIdentificationRequestErrors(int count) { identification_.SetRequestErrors(count); }
  void QueuePendingErrors(int count, std::int32_t code = PendingErrors::kBusError) {
    pendingErrors_.Queue(count, code);
  }
  std::uint16_t ManufacturerAccessWord() const { return manufacturerAccess_.LastWord(); }

  // What the bench applies to the inputs, the converter's errors, and what the gauge makes of
  // both: raw counts, and reports through the calibration data in its dataflash. Either may
  // change at any time; the next read shows it.
  void ApplyMeasurements(const Measurements& measurements) { measurements_.Apply(measurements); }
  const Measurements& AppliedMeasurements() const { return measurements_.Applied(); }
  void SetConverterErrors(const ConverterErrors& errors) {
    measurements_.SetConverterErrors(errors);
  }
  const ConverterErrors& GetConverterErrors() const { return measurements_.GetConverterErrors(); }
  RawReadings RawCounts() const { return measurements_.Raw(); }
  Measurements ReportedMeasurements() const { return measurements_.Reported(); }

  // 1 or 2 while raw output streams, 0 when it does not.
  std::uint8_t RawOutputStatus() const { return rawOutput_.Status(); }
  // The rolling counter of the raw block keeps its present value.
  void StallRawCounter(bool stalled) { rawOutput_.SetCounterStalled(stalled); }

  void SetSecurityMode(SecurityMode mode) { securityMode_ = mode; }
  SecurityMode GetSecurityMode() const { return securityMode_; }
  // The keys in display order, first byte most significant.
  const SecurityKey& Key(GaugeKey key) const { return security_.Key(key); }
  void SetKey(GaugeKey key, const SecurityKey& value) { security_.SetKey(key, value); }
  // The challenges the gauge sends from now on follow from seed.
  void SeedChallenges(std::uint32_t seed) { security_.SeedChallenges(seed); }

  bool InCalibrationMode() const { return calibrationMode_.Active(); }
  // The gauge ignores the word that enters calibration mode.
  void RefuseCalibrationMode(bool refusing) { calibrationMode_.SetRefusing(refusing); }
  // The calibration flag the gauge reports keeps its present value.
  void StallCalibrationFlag(bool stalled) { calibrationMode_.SetFlagStalled(stalled); }

  // The dataflash as it is, whatever the security mode; bytes past its end read as erased.
  Bytes DataflashBytes(std::size_t address, std::size_t count) const {
    return dataflash_.Peek(address, count);
  }
  void SetDataflashBytes(std::size_t address, std::span<const std::uint8_t> data) {
    dataflash_.Poke(address, data);
  }

  // Injected faults; see BusFaults.
  void FailNext(Transfer kind, int count) { faults_.FailNext(kind, count); }
  void AnswerNextBlockReadsWithLength(int count, std::uint8_t length) {
    faults_.AnswerNextBlockReadsWithLength(count, length);
  }
  void SetDisconnected(bool disconnected) { faults_.SetDisconnected(disconnected); }
  void CorruptNextRead(Transfer kind, std::size_t byte) { faults_.CorruptNextRead(kind, byte); }
  // The next dataflash write over the bus stores byte of what it writes inverted.
  void StoreWrongDataflashByteOnNextWrite(std::size_t byte) {
    dataflash_.StoreWrongByteOnNextWrite(byte);
  }

  // For the gauge's parts that install commands, ManufacturerAccess words and selections.
  CommandSet& Commands() { return commands_; }
  ManufacturerAccess& GetManufacturerAccess() { return manufacturerAccess_; }
  SelectedBlock& SharedData() { return sharedData_; }

 private:
  Family family_;
  Clock& clock_;
  BusFaults faults_;
  PendingErrors pendingErrors_;
  CommandSet commands_;
  SelectedBlock sharedData_{commands_, kSharedDataCommand};
  ManufacturerAccess manufacturerAccess_{commands_, kManufacturerAccessCommand};
  Identification identification_;
  SecurityMode securityMode_ = SecurityMode::Unsealed;
  SecurityExchanges security_{manufacturerAccess_, sharedData_, securityMode_};
  Dataflash dataflash_{securityMode_};
  MeasurementReports measurements_{family_, commands_, manufacturerAccess_, dataflash_};
  CalibrationMode calibrationMode_{family_, commands_, manufacturerAccess_};
  ManufacturerData manufacturerData_{commands_, manufacturerAccess_, measurements_, securityMode_,
                                     calibrationMode_};
  RawOutput rawOutput_{manufacturerAccess_, manufacturerData_.Data(), clock_, measurements_};
  // QUILL only.
  std::optional<QuillSubclasses> quillSubclasses_;
};

}  // namespace ombrelay::sim
