#pragma once
// The host's bus operations carried out on a simulated gauge, in-process. Transfers take no
// time; only Delay waits, on the simulator's clock.

#include "shell/host.h"
#include "sim/clock.h"
#include "sim/gauge.h"

namespace ombrelay {

class SimHost : public Host {
 public:
  // Failure statuses; callers only tell them from 0, the bus log shows them.
  static constexpr Status kNoAcknowledge = 1;    // no gauge at the address, or it refused
  static constexpr Status kInvalidArgument = 2;  // a command or length the bus cannot carry
  static constexpr Status kAnswerTooLong = 3;    // the block does not fit the caller's array

  explicit SimHost(sim::Clock& clock) : clock_(clock) {}

  // nullptr takes the gauge off the bus: every transfer then fails and no error is pending.
  void Attach(sim::Gauge* gauge) { gauge_ = gauge; }

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

 private:
  // The checks every transfer makes before it reaches the gauge: 0 when it may go ahead.
  Status Reach(std::int32_t command, std::int16_t address) const;
  Status ReadWord(std::int32_t command, std::int16_t address, std::uint16_t& word);
  Status WriteWord(std::int32_t command, std::int16_t address, std::uint16_t word);

  sim::Clock& clock_;
  sim::Gauge* gauge_ = nullptr;
};

}  // namespace ombrelay
