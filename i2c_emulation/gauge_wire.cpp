#include "i2c_emulation/gauge_wire.h"

#include <algorithm>
#include <array>
#include <utility>

#include "hosts/smbus_pec.h"

namespace ombrelay::i2c_emulation {
namespace {

constexpr std::uint8_t kWriteAddress = kGaugeAddress << 1;
constexpr std::uint8_t kReadAddress = kGaugeAddress << 1 | 1;
// A word and its PEC: a master that reads more wants a block.
constexpr std::size_t kLongestWordRead = 3;

bool IsRead(const i2c_msg& message) {
  return (message.flags & I2C_M_RD) != 0;
}

bool ToGauge(const i2c_msg& message) {
  return message.addr == kGaugeAddress && (message.flags & I2C_M_TEN) == 0;
}

// A write carries a PEC byte after its payload when it has one more byte than the payload.
bool PecMatches(std::span<const std::uint8_t> bytes, std::size_t payload) {
  if (bytes.size() == payload) return true;
  const std::array<std::uint8_t, 1> address{kWriteAddress};
  return SmbusPec(bytes.first(payload), SmbusPec(address)) == bytes[payload];
}

GaugeWire::Step MakeStep(GaugeWire::Step::Kind kind, std::uint8_t command, std::uint16_t word = 0,
                         std::span<const std::uint8_t> block = {}) {
  GaugeWire::Step step;
  step.kind = kind;
  step.command = command;
  step.word = word;
  step.block = block;
  return step;
}

Answer WithPec(std::uint8_t command, sim::Bytes bytes) {
  const std::array<std::uint8_t, 3> head{kWriteAddress, command, kReadAddress};
  bytes.push_back(SmbusPec(bytes, SmbusPec(head)));
  return Answer(std::move(bytes));
}

}  // namespace

std::optional<std::vector<GaugeWire::Step>> GaugeWire::Plan(
    std::span<const i2c_msg> messages) const {
  if (gauge_ == nullptr || !std::ranges::all_of(messages, ToGauge)) return std::nullopt;
  std::vector<Step> steps;
  for (std::size_t i = 0; i < messages.size(); ++i) {
    const i2c_msg& message = messages[i];
    std::optional<Step> step;
    if (message.len == 0) {
      step = Step{};
    } else if (IsRead(message)) {
      // The gauge has nothing to say until it is told which command.
      return std::nullopt;
    } else if (i + 1 < messages.size() && IsRead(messages[i + 1]) && messages[i + 1].len > 0) {
      step = PlanRead(message, messages[i + 1]);
      if (step) step->reply = ++i;
    } else {
      step = PlanWrite(std::span(message.buf, message.len));
    }
    if (!step) return std::nullopt;
    steps.push_back(*step);
  }
  return steps;
}

std::optional<GaugeWire::Step> GaugeWire::PlanWrite(std::span<const std::uint8_t> bytes) const {
  const std::uint8_t command = bytes[0];
  const std::size_t count = bytes.size() > 1 ? bytes[1] : 0;
  if (gauge_->TakesBlockWrites(command) && bytes.size() >= 2 &&
      (bytes.size() == count + 2 || bytes.size() == count + 3)) {
    if (!PecMatches(bytes, count + 2)) return std::nullopt;
    return MakeStep(Step::Kind::BlockWrite, command, 0, bytes.subspan(2, count));
  }
  if (gauge_->TakesWordWrites(command) && (bytes.size() == 3 || bytes.size() == 4)) {
    if (!PecMatches(bytes, 3)) return std::nullopt;
    return MakeStep(Step::Kind::WordWrite, command,
                    static_cast<std::uint16_t>(bytes[2] << 8 | bytes[1]));
  }
  return std::nullopt;
}

// A command that answers both words and blocks answers what the master reads: a block when it
// takes the length from the gauge or reads more than a word and its PEC.
std::optional<GaugeWire::Step> GaugeWire::PlanRead(const i2c_msg& write,
                                                   const i2c_msg& read) const {
  if (write.len != 1) return std::nullopt;
  const std::uint8_t command = write.buf[0];
  const bool blocks = gauge_->AnswersBlockReads(command);
  const bool words = gauge_->AnswersWordReads(command);
  const bool wantsBlock = (read.flags & I2C_M_RECV_LEN) != 0 || read.len > kLongestWordRead;
  if (blocks && (wantsBlock || !words)) return MakeStep(Step::Kind::BlockRead, command);
  if (words) return MakeStep(Step::Kind::WordRead, command);
  return std::nullopt;
}

std::optional<Answer> GaugeWire::Run(const Step& step) {
  switch (step.kind) {
    case Step::Kind::Quick:
      return Answer();
    case Step::Kind::WordWrite:
      if (!gauge_->WriteWord(step.command, step.word)) return std::nullopt;
      return Answer();
    case Step::Kind::BlockWrite:
      if (!gauge_->WriteBlock(step.command, step.block)) return std::nullopt;
      return Answer();
    case Step::Kind::WordRead: {
      const auto word = gauge_->ReadWord(step.command);
      if (!word) return std::nullopt;
      return WithPec(step.command, {static_cast<std::uint8_t>(*word & 0xFF),
                                    static_cast<std::uint8_t>(*word >> 8)});
    }
    case Step::Kind::BlockRead: {
      auto block = gauge_->ReadBlock(step.command);
      if (!block) return std::nullopt;
      block->insert(block->begin(), static_cast<std::uint8_t>(block->size()));
      return WithPec(step.command, std::move(*block));
    }
  }
  return std::nullopt;
}

}  // namespace ombrelay::i2c_emulation
