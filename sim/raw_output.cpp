#include "sim/raw_output.h"

namespace ombrelay::sim {
namespace {

constexpr std::int64_t kCounterValues = 255;

void AppendLowByteFirst(Bytes& block, std::uint16_t value) {
  block.push_back(static_cast<std::uint8_t>(value & 0xFF));
  block.push_back(static_cast<std::uint8_t>(value >> 8));
}

}  // namespace

RawOutput::RawOutput(ManufacturerAccess& access, SelectedBlock& data, const Clock& clock,
                     const MeasurementReports& measurements)
    : clock_(clock), measurements_(measurements) {
  access.On(kStartWord, [this, &data] { Start(data, kRawStatus); });
  access.On(kStartForOffsetWord, [this, &data] { Start(data, kOffsetStatus); });
  access.On(kStopWord, [this] { status_ = 0; });
}

void RawOutput::Start(SelectedBlock& data, std::uint8_t status) {
  status_ = status;
  // Once stopped, the block is no longer answered until the next start.
  data.Select({[this]() -> std::optional<Bytes> {
                 if (status_ == 0) return std::nullopt;
                 return Block();
               },
               {}});
}

std::uint8_t RawOutput::Counter() const {
  if (stalledCounter_) return *stalledCounter_;
  return static_cast<std::uint8_t>(1 + clock_.NowMs() / kReadingPeriodMs % kCounterValues);
}

void RawOutput::SetCounterStalled(bool stalled) {
  stalledCounter_ = stalled ? std::optional<std::uint8_t>(Counter()) : std::nullopt;
}

Bytes RawOutput::Block() const {
  const RawReadings raw = measurements_.Raw();
  Bytes block = {Counter(), status_};
  AppendLowByteFirst(block,
                     static_cast<std::uint16_t>(status_ == kOffsetStatus ? raw.shortedCoulombCounter
                                                                         : raw.coulombCounter));
  for (const std::uint16_t cell : raw.cells)
    AppendLowByteFirst(block, cell);
  for (std::size_t sensor = Measurements::kInternal; sensor <= Measurements::kTS4; ++sensor)
    AppendLowByteFirst(block, static_cast<std::uint16_t>(raw.temperatures[sensor]));
  AppendLowByteFirst(block, raw.pack);
  AppendLowByteFirst(block, raw.battery);
  return block;
}

}  // namespace ombrelay::sim
