#include "tests/support/flow_trace.h"

#include "shell/numeric.h"
#include "shell/utils.h"

namespace ombrelay::testing {
namespace {

constexpr std::int16_t kUsualAddress = 23;

std::string HexBytes(const std::vector<std::uint8_t>& bytes) {
  std::string hex;
  for (const std::uint8_t byte : bytes)
    hex += PadLeftZeros(Hex(byte), 2);
  return hex;
}

std::string Format(const BusOperation& operation) {
  std::string line = operation.op;
  if (operation.cmd != BusOperation::kNoCommand) {
    line += " " + PadLeftZeros(Hex(static_cast<std::uint32_t>(operation.cmd)), 2);
  }
  const bool failed = operation.status != 0;
  if (operation.op == "WriteSMBusWord_" || operation.op == "WriteSMBusWord") {
    line += " " + PadLeftZeros(Hex(operation.word.value_or(0)), 4);
  } else if (operation.op == "WriteSMBusBlock") {
    line += " " + std::to_string(operation.len) + " " + HexBytes(operation.data);
  } else if (operation.op == "ReadSMBusBlock_" || operation.op == "ReadSMBusBlock") {
    if (!failed) line += " -> " + std::to_string(operation.len);
  } else if (operation.op == "CheckForError") {
    line += " -> " + std::to_string(operation.status);
  } else if (operation.op == "Delay") {
    line += " " + std::to_string(operation.len);
  }
  if (failed && operation.op != "CheckForError") line += " -> fail";
  if (operation.cmd != BusOperation::kNoCommand && operation.address != kUsualAddress) {
    line += " @" + std::to_string(operation.address);
  }
  return line;
}

std::string Format(const RecordedMessage& message) {
  std::string line = message.style == MessageStyle::Error ? "box error \"" : "box \"";
  line += message.text + "\"";
  if (!message.title.empty()) line += " title \"" + message.title + "\"";
  return line;
}

}  // namespace

void FlowTrace::Record(const BusOperation& operation) {
  Look();
  lines_.push_back(Format(operation));
}

void FlowTrace::Record(const PlatformActivity& activity) {
  Look();
  using Kind = PlatformActivity::Kind;
  switch (activity.kind) {
    case Kind::Sleep:
      lines_.push_back("sleep " + std::to_string(activity.milliseconds));
      break;
    case Kind::PumpingWaitStarted:
      lines_.push_back("pumpwait " + std::to_string(activity.milliseconds));
      ++pumpingWaits_;
      break;
    case Kind::PumpingWaitEnded:
      --pumpingWaits_;
      break;
    case Kind::Pump:
      if (pumpingWaits_ == 0) lines_.push_back("pump");
      break;
    case Kind::TimerChanged:
      break;  // the probe tells how it changed
    case Kind::Message:
      lines_.push_back(Format(*activity.message));
      break;
  }
}

void FlowTrace::Watch(Probe probe) {
  probe_ = std::move(probe);
  seen_ = probe_();
}

void FlowTrace::Clear() {
  lines_.clear();
  if (probe_) seen_ = probe_();
}

std::vector<std::string> FlowTrace::Lines() {
  Look();
  return lines_;
}

void FlowTrace::Look() {
  if (!probe_) return;
  std::vector<std::string> now = probe_();
  for (std::size_t i = 0; i < now.size(); ++i) {
    if (i >= seen_.size() || now[i] != seen_[i]) lines_.push_back(now[i]);
  }
  seen_ = std::move(now);
}

}  // namespace ombrelay::testing
