#include "gauge/measurement_reads.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "gauge/manufacturer_access.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

using CellCommands = std::array<std::int32_t, 4>;

constexpr CellCommands kCellVoltageCommands = {0x3B, 0x3A, 0x39, 0x38};
constexpr CellCommands kAltCellVoltageCommands = {0x3F, 0x3E, 0x3D, 0x3C};

// Reads the stack from the bottom cell up. From firstDoubleSum on, sums are made in double
// precision and no longer limited to 16 bits.
void ReadStackVoltages(const CellCommands& commands, std::size_t firstDoubleSum,
                       const std::array<std::string*, 4>& outputs) {
  for (std::size_t step = 0; step < commands.size(); ++step) {
    std::uint8_t high = 0;
    std::uint8_t low = 0;
    if (g_oHost->ReadSMBusWord(commands[step], high, low, g_iTargetAddress) != 0) {
      for (std::size_t rest = step; rest < outputs.size(); ++rest)
        *outputs[rest] = kErrRd;
      return;
    }
    std::int16_t word = 0;
    JoinBytestoWord(high, low, word);
    std::string& output = *outputs[step];
    if (step == 0) {
      output = std::to_string(word);
    } else if (step >= firstDoubleSum) {
      output = FormatShortest(TextToDouble(*outputs[step - 1]) + word);
    } else {
      output = std::to_string(ToInt16(TextToInt16(*outputs[step - 1]) + word));
    }
  }
}

}  // namespace

std::optional<std::int16_t> ReadSignedWord(std::int32_t command) {
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  if (g_oHost->ReadSMBusWord(command, high, low, g_iTargetAddress) != 0) return std::nullopt;
  std::int16_t word = 0;
  JoinBytestoWord(high, low, word);
  return word;
}

Status readmeasurementfromdevice(const std::string& readCommand, const std::string& format,
                                 std::string& value) {
  if (format != "U2" && format != "I2" && format != "I1") {
    MsgBox("Format specified in function readmeasurementfromdevice is not supported.");
    return 1;
  }
  if (readCommand.size() < 4) {
    MsgBox("Error in length of read command string in function readmeasurementfromdevice.");
    return 1;
  }
  const std::vector<std::string> parts = Split(readCommand, ',');
  if (parts.size() < 2 || parts[0].empty() || parts[1].empty()) {
    MsgBox("Error in format of read command string in function readmeasurementfromdevice.");
    return 1;
  }
  const std::string_view source = Trim(parts[0]);
  const std::int16_t command = TextToInt16(parts[1]);

  std::uint8_t high = 0;
  std::uint8_t low = 0;
  Status status = 0;
  if (source == "SBS") {
    status = g_oHost->ReadSMBusWord(command, high, low, g_iTargetAddress);
  } else if (source == "MAC") {
    if (WriteManufacturerAccess(command, g_iTargetAddress) != 0) {
      value = kErrRd;
      return 0;
    }
    // The answer is read back from ManufacturerAccess itself.
    status = g_oHost->ReadSMBusWord(g_bZenoMAC, high, low, g_iTargetAddress);
  }
  if (status != 0) {
    value = kErrRd;
    return 0;
  }

  if (format == "I2") {
    std::int16_t word = 0;
    JoinBytestoWord(high, low, word);
    value = std::to_string(word);
  } else {
    // Made in 16-bit signed arithmetic: a high byte of 128 or more overflows.
    value = std::to_string(ToInt16(high * 256.0 + low));
  }
  return 0;
}

void ReadCumulativeCellVoltages(std::string& voltage1, std::string& voltage2, std::string& voltage3,
                                std::string& voltage4) {
  ReadStackVoltages(kCellVoltageCommands, 2, {&voltage1, &voltage2, &voltage3, &voltage4});
}

void ReadCellVoltagesbyConfig(std::string& voltage1, std::string& voltage2, std::string& voltage3,
                              std::string& voltage4) {
  ReadStackVoltages(g_bReadAltCellVoltages ? kCellVoltageCommands : kAltCellVoltageCommands,
                    kCellVoltageCommands.size(), {&voltage1, &voltage2, &voltage3, &voltage4});
}

}  // namespace ombrelay
