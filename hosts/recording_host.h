#pragma once
// A host that passes every operation on to another and records it, with the clock time of the
// call: tests assert exact bus sequences against the record, and the bench shows it as a live
// bus log and can keep it in a JSON Lines file.

#include <cstdint>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hosts/bus_operation.h"
#include "hosts/key_masking.h"
#include "shell/host.h"

namespace ombrelay {

class RecordingHost : public Host {
 public:
  RecordingHost(Host& inner, std::function<std::int64_t()> nowMs);

  Status ReadSMBusBlock_(std::int32_t command, std::span<std::uint8_t> data, std::int16_t& length,
                         std::int16_t address) override;
  Status ReadSMBusBlock(std::int32_t command, std::string& text, std::int16_t address) override;
  Status WriteSMBusBlock(std::int32_t command, std::span<const std::uint8_t> data,
                         std::int16_t length, std::int16_t address) override;
  Status ReadSMBusWord(std::int32_t command, std::uint8_t& high, std::uint8_t& low,
                       std::int16_t address) override;
  Status ReadSMBusWord_(std::int32_t command, std::int16_t& word, std::int16_t address) override;
  Status WriteSMBusWord(std::int32_t command, std::uint8_t high, std::uint8_t low,
                        std::int16_t address) override;
  Status WriteSMBusWord_(std::int32_t command, std::int16_t word, std::int16_t address) override;
  std::int32_t CheckForError() override;
  void Delay(std::int16_t count) override;

  // From now on the operations go to inner: another bus, the record and log going on.
  void SetInner(Host& inner) { inner_ = &inner; }

  // Every operation so far, oldest first.
  const std::vector<BusOperation>& Operations() const { return operations_; }
  // Forgets the record; an open log file goes on.
  void Clear() { operations_.clear(); }
  // Called after each operation is recorded.
  std::function<void(const BusOperation&)> onOperation;

  // Starts a new log at path (any earlier log is closed), one JSON object a line, flushed as
  // each operation happens. False when the file cannot be opened; then nothing is logged.
  bool OpenLog(const std::string& path);
  // From now on keys are withheld from the record and the log (see KeyMasking).
  void MaskKeys() { masking_.emplace(); }

 private:
  BusOperation Start(const char* op, std::int32_t command, std::int16_t address = 0) const;
  BusOperation StartWord(const char* op, std::int32_t command, std::int16_t address) const;
  static void SetWord(BusOperation& operation, std::uint8_t high, std::uint8_t low);
  // Keeps, logs and announces the operation; gives back its status.
  Status Record(BusOperation operation);

  Host* inner_;
  std::function<std::int64_t()> nowMs_;
  std::vector<BusOperation> operations_;
  std::ofstream log_;
  std::optional<KeyMasking> masking_;
};

}  // namespace ombrelay
