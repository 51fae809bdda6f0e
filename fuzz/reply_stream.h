#pragma once
// How the gauge-reply fuzzer's bytes stand for the gauge's answers, shared by the host that reads
// them and the recorder that writes seed streams from the simulator.
//
// Every transfer starts with a status byte: from kFailingStatus up the transfer fails, so about
// one in eight random transfers does. A word read that succeeded then takes two bytes, high and
// low; a block read a length byte and that many bytes. Writes take the status alone. A pending
// bus error takes one byte, its count; after kMostPendingErrorsInARow pending ones the next call
// takes nothing and finds none, so that every drain ends. Once the bytes run out, every transfer
// fails and no error is pending.

#include <cstdint>

namespace ombrelay::fuzz {

inline constexpr std::uint8_t kSucceededStatus = 0x00;
inline constexpr std::uint8_t kFailingStatus = 0xE0;
inline constexpr int kMostPendingErrorsInARow = 3;

}  // namespace ombrelay::fuzz
