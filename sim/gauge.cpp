#include "sim/gauge.h"

namespace ombrelay::sim {

Gauge::Gauge(Family family, const Identity& identity, Clock& clock)
    : family_(family),
      clock_(clock),
      identification_(BuildIdentificationBlock(identity), commands_, sharedData_, pendingErrors_) {
  SetWord(kRelativeStateOfCharge, kDefaultStateOfCharge);
}

std::optional<std::uint16_t> Gauge::ReadWord(std::uint8_t command) {
  if (faults_.TakeFailure(Transfer::WordRead)) return std::nullopt;
  return commands_.ReadWord(command);
}

bool Gauge::WriteWord(std::uint8_t command, std::uint16_t word) {
  if (faults_.TakeFailure(Transfer::WordWrite)) return false;
  return commands_.WriteWord(command, word);
}

std::optional<Bytes> Gauge::ReadBlock(std::uint8_t command) {
  if (faults_.TakeFailure(Transfer::BlockRead)) return std::nullopt;
  auto answer = commands_.ReadBlock(command);
  if (answer) faults_.Reshape(*answer);
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
