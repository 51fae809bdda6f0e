#pragma once
// Measurements that some gauges give only as single words: the cell voltages summed from the
// bottom of the stack upward, and any one value named by a read command of the configuration.

#include <cstdint>
#include <optional>
#include <string>

#include "shell/host.h"

namespace ombrelay {

// Stands in place of a number after a failed read; callers compare it as text.
inline constexpr const char* kErrRd = "Err_Rd";

// Tenths of a kelvin at 0 degrees Celsius, as the gauge counts its temperatures.
inline constexpr double kZeroCelsiusTenths = 2732.0;

// An SBS word as a signed 16-bit value; nothing when the read failed.
std::optional<std::int16_t> ReadSignedWord(std::int32_t command);

// readCommand is "SBS,<command>" or "MAC,<word>"; format is U2, I2 or I1. 1 after a message
// when either is unusable (value untouched), else 0 with the value in value, or kErrRd after a
// failed transfer. A U2 or I1 word above 32767 throws RuntimeError("Overflow").
Status readmeasurementfromdevice(const std::string& readCommand, const std::string& format,
                                 std::string& value);

// Stack voltages from commands 0x3B down to 0x38: each output is the previous one plus the next
// cell. A failed read makes that output and every later one kErrRd. The first two sums are
// 16-bit and throw RuntimeError("Overflow") above 32767; the last two are not limited.
void ReadCumulativeCellVoltages(std::string& voltage1, std::string& voltage2, std::string& voltage3,
                                std::string& voltage4);

// The same from 0x3F down to 0x3C, or from 0x3B down to 0x38 with g_bReadAltCellVoltages; every
// sum is 16-bit.
void ReadCellVoltagesbyConfig(std::string& voltage1, std::string& voltage2, std::string& voltage3,
                              std::string& voltage4);

}  // namespace ombrelay
