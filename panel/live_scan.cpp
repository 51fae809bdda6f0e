// The live scan: every two seconds, while the user asks for it, what the gauge measures goes into
// the measured boxes of the pages, each family by its own way of reporting.

#include <array>
#include <cmath>
#include <optional>
#include <string>

#include "calibration/raw_capture.h"
#include "config/identification.h"
#include "gauge/calibration_dataflash.h"
#include "gauge/manufacturer_blocks.h"
#include "gauge/measurement_reads.h"
#include "gauge/value_conversion.h"
#include "panel/nbcal.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kTemperatureCommand = 0x08;
constexpr std::int32_t kCurrentCommand = 0x0A;

std::string ValueOrErrRd(const std::string& value) {
  return value.empty() ? kErrRd : value;
}

std::string CelsiusFromTenthsKelvin(double tenths) {
  return FormatShortest((tenths - kZeroCelsiusTenths) / 10.0);
}

// A signed SBS word; nothing when it cannot be read.
// A sensor named by its read command, in degrees C.
void ShowSensorTemperature(const std::string& readCommand, TextBox& box) {
  std::string value;
  if (readmeasurementfromdevice(readCommand, "I1", value) != 0 || value == kErrRd) {
    box.Text = kErrRd;
  } else {
    box.Text = CelsiusFromTenthsKelvin(TextToDouble(value));
  }
}

// A raw word of the stream through a calibrated gain; "Err_Rd" for a raw 0.
std::string ThroughGain(std::uint8_t high, std::uint8_t low, const MODField& gain) {
  const int word = high * 256 + low;
  if (word == 0) return kErrRd;
  return FormatShortest(RoundHalfEven(TextToDouble(gain.sValue) * word / 65536.0));
}

}  // namespace

void NBCal::tmrScan_Timer() {
  // A run-time error, such as a stack sum that overflows, ends the tick without a word.
  try {
    if (chkUpdates.Value != 1) return;
    switch (g_iDFType) {
      case MORLIN:
        if (CheckDeviceResponds() != 0) return;
        if (ReadAllMODBlocks() != 0) {
          MsgBox("Error reading GG Mode data from Pack.");
          return;
        }
        TransferCurrentValuestoGrid(0);
        TransferCurrentValuestoGrid(1);
        TransferMODValuestoDisplay();
        break;
      case KELD_PLUS:
        ReadandDisplayAllDeviceDataonDisplay();
        break;
      case KELD:
        ReadandDisplayDeviceValues();
        break;
      case QUILL:
        g_oPlatform->Sleep(20);
        ReadandDisplayDeviceValues();
        break;
      default:
        break;
    }
    EnableCalibrationControls();
  } catch (const RuntimeError&) {
  }
}

void NBCal::ReadandDisplayAllDeviceDataonDisplay() {
  if (g_iDFType == MORLIN) {
    ReadAllMODBlocks();
    TransferCurrentValuestoGrid(0);
    TransferCurrentValuestoGrid(1);
    TransferMODValuestoDisplay();
  } else if (g_iDFType == KELD_PLUS) {
    ReadandDisplayKeldPlusValues();
  }
}

void NBCal::TransferMODValuestoDisplay() {
  const MODBlock& voltages = g_atMODBlocks[0];
  // The block carries each cell's own voltage; the boxes show stack voltages.
  std::int16_t stack = 0;
  for (std::size_t i = 0; i < txtCalMeasVoltage.size(); ++i) {
    const std::string& cell = voltages.atFields[i].sValue;
    if (cell.empty()) {
      txtCalMeasVoltage[i].Text = kErrRd;
      continue;
    }
    stack = ToInt16(stack + TextToInt16(cell));
    txtCalMeasVoltage[i].Text = std::to_string(stack);
  }
  const auto wholeNumber = [](const std::string& value) {
    return value.empty() ? kErrRd : std::to_string(ToInt32(TextToDouble(value)));
  };
  txtBatMeasured.Text = wholeNumber(voltages.atFields[4].sValue);
  txtPackMeasured.Text = wholeNumber(voltages.atFields[5].sValue);
  for (std::size_t i = 0; i < txtMeasTemp.size(); ++i)
    txtMeasTemp[i].Text = ValueOrErrRd(g_atMODBlocks[1].atFields[i].sValue);
  txtMeasuredCurrent.Text = ValueOrErrRd(g_atMODBlocks[3].atFields[0].sValue);
}

void NBCal::ShowStackVoltages() {
  std::array<std::string, 4> stack;
  if (g_iDFType == KELD) {
    ReadCumulativeCellVoltages(stack[0], stack[1], stack[2], stack[3]);
  } else {
    ReadCellVoltagesbyConfig(stack[0], stack[1], stack[2], stack[3]);
  }
  for (std::size_t i = 0; i < stack.size(); ++i)
    txtCalMeasVoltage[i].Text = stack[i];
}

void NBCal::ShowCurrentAndTemperatures(bool withInternal) {
  const std::optional<std::int16_t> current = ReadSignedWord(kCurrentCommand);
  txtMeasuredCurrent.Text = current ? std::to_string(*current) : kErrRd;
  if (withInternal && g_bIntTSSupported) {
    const std::optional<std::int16_t> internal = ReadSignedWord(kTemperatureCommand);
    txtMeasTemp[0].Text = internal ? CelsiusFromTenthsKelvin(*internal) : kErrRd;
  }
  if (g_bTS1Supported) ShowSensorTemperature(g_sTS1ReadCommand, txtMeasTemp[1]);
  if (g_bTS2Supported) ShowSensorTemperature(g_sTS2ReadCommand, txtMeasTemp[2]);
}

void NBCal::ReadandDisplayDeviceValues() {
  ShowStackVoltages();
  if (g_bBatteryVSupported) txtBatMeasured.Text = kErrRd;
  if (g_bPackVSupported) {
    std::string value;
    if (readmeasurementfromdevice(g_sPackVoltageReadCommand, "U2", value) == 0) {
      txtPackMeasured.Text = value;
    }
  }
  ShowCurrentAndTemperatures(true);
}

void NBCal::ReadandDisplayKeldPlusValues() {
  try {
    std::array<std::uint8_t, 256> raw{};
    if (g_bBatteryVSupported || g_bPackVSupported) WaitForRawCalSequence(raw);
    const MODBlock& calibration = g_atCalParameters[0];
    if (g_bBatteryVSupported) {
      txtBatMeasured.Text = ThroughGain(raw[25], raw[24], calibration.atFields[5]);
    }
    if (g_bPackVSupported) {
      WaitForRawCalSequence(raw);
      txtPackMeasured.Text = ThroughGain(raw[23], raw[22], calibration.atFields[4]);
    }
    ShowStackVoltages();
    // This kind does not refresh its internal sensor here.
    ShowCurrentAndTemperatures(false);
  } catch (const RuntimeError& error) {
    MsgBox(std::string("Unhandled error reading ombrelay ports SBS values.") + " Error is " +
           error.what());
  }
}

void NBCal::ReadandUpdateAllDFValues() {
  tmrScan.SetEnabled(false);
  g_oPlatform->Sleep(10);
  if (ReadCalDataflash() == 0) {
    TransferCalDatatoTable();
    TransferDFValuestoGrid();
    g_oPlatform->Sleep(20);
  }
  tmrScan.SetEnabled(true);
}

}  // namespace ombrelay
