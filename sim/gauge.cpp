#include "sim/gauge.h"

#include "sim/dataflash_rows.h"
#include "sim/keld_dataflash.h"

namespace ombrelay::sim {

Gauge::Gauge(Family family, const Identity& identity, Clock& clock)
    : family_(family),
      clock_(clock),
      identification_(BuildIdentificationBlock(identity), commands_, sharedData_, pendingErrors_) {
  SetWord(kRelativeStateOfCharge, kDefaultStateOfCharge);
  switch (family) {
    case Family::Keld:
      KeldDataflash::Install(commands_, dataflash_);
      break;
    case Family::Quill:
      quillSubclasses_.emplace(commands_, dataflash_);
      break;
    case Family::Morlin:
    case Family::KeldPlus:
      DataflashRows::Install(manufacturerAccess_, sharedData_, dataflash_);
      break;
  }
}

std::optional<std::uint16_t> Gauge::ReadWord(std::uint8_t command) {
  if (faults_.TakeFailure(Transfer::WordRead)) return std::nullopt;
  const auto word = commands_.ReadWord(command);
  if (!word) return word;
  Bytes bytes = {static_cast<std::uint8_t>(*word & 0xFF), static_cast<std::uint8_t>(*word >> 8)};
  faults_.Corrupt(Transfer::WordRead, bytes);
  return static_cast<std::uint16_t>(bytes[1] << 8 | bytes[0]);
}

bool Gauge::WriteWord(std::uint8_t command, std::uint16_t word) {
  if (faults_.TakeFailure(Transfer::WordWrite)) return false;
  return commands_.WriteWord(command, word);
}

std::optional<Bytes> Gauge::ReadBlock(std::uint8_t command) {
  if (faults_.TakeFailure(Transfer::BlockRead)) return std::nullopt;
  auto answer = commands_.ReadBlock(command);
  if (answer) {
    faults_.Reshape(*answer);
    faults_.Corrupt(Transfer::BlockRead, *answer);
  }
  return answer;
}

bool Gauge::WriteBlock(std::uint8_t command, std::span<const std::uint8_t> data) {
  if (faults_.TakeFailure(Transfer::BlockWrite)) return false;
  return commands_.WriteBlock(command, data);
}

void Gauge::SetWord(std::uint8_t command, std::uint16_t value) {
  commands_.OnReadWord(command, [value]() -> std::optional<std::uint16_t> { return value; });
}

}  // namespace ombrelay::sim
