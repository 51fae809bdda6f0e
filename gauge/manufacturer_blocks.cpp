#include "gauge/manufacturer_blocks.h"

#include <algorithm>
#include <string>

#include "gauge/measurement_reads.h"
#include "shell/numeric.h"
#include "shell/platform.h"
#include "shell/shared_state.h"
#include "shell/utils.h"

namespace ombrelay {
namespace {

constexpr std::int32_t kCurrentCommand = 0x0A;
constexpr std::int16_t kCurrentBlock = 3;
constexpr float kRequestRetryWait = 0.05F;

MODBlock& BlockAt(std::int16_t blockIndex) {
  return g_atMODBlocks.at(static_cast<std::size_t>(blockIndex));
}

MODField& FieldAt(std::int16_t blockIndex, std::int16_t fieldIndex) {
  return BlockAt(blockIndex).atFields.at(static_cast<std::size_t>(fieldIndex));
}

// The fields the grid shows lose their values; the slots beyond keep theirs.
void EmptyShownValues(std::int16_t blockIndex) {
  MODBlock& block = BlockAt(blockIndex);
  const auto shown = std::clamp<std::int32_t>(block.lFieldCount, 0, kMODFieldSlots);
  for (std::int32_t slot = 0; slot < shown; ++slot) {
    block.atFields[static_cast<std::size_t>(slot)].sValue.clear();
  }
}

void DecodeField(MODField& field, const MODBuffer& buffer, bool temperatures,
                 const char* unknownTypeMessage) {
  const auto offset = static_cast<std::size_t>(TextToInt16(field.sOffset));
  const auto low = [&] { return buffer.at(offset); };
  const auto high = [&] { return buffer.at(offset + 1); };
  const std::string& type = field.sDataType;
  if (type == "U1") {
    field.sValue = std::to_string(low());
  } else if (type == "U2") {
    field.sValue = std::to_string(high() * 256 + low());
  } else if (temperatures && type == "T2") {
    field.sValue = FormatTenths((high() * 256 + low() - kZeroCelsiusTenths) / 10.0);
  } else if (type == "I2") {
    std::int16_t word = 0;
    JoinBytestoWord(high(), low(), word);
    field.sValue = std::to_string(word);
  } else {
    MsgBox(unknownTypeMessage);
    field.sValue.clear();
  }
}

}  // namespace

Status ReadAllMODBlocks() {
  MODBuffer buffer{};
  for (const std::int16_t blockIndex : {0, 1}) {
    if (!BlockAt(blockIndex).bActive) continue;
    if (ReadMODBlock(blockIndex, buffer) != 0) {
      MsgBox("Error returning values of Manufacturing Block. Please check communications.");
      return 1;
    }
  }

  std::uint8_t high = 0;
  std::uint8_t low = 0;
  MODField& current = FieldAt(kCurrentBlock, 0);
  if (g_oHost->ReadSMBusWord(kCurrentCommand, high, low, g_iTargetAddress) == 0) {
    std::int16_t word = 0;
    JoinBytestoWord(high, low, word);
    current.sValue = std::to_string(word);
  } else {
    current.sValue.clear();
  }
  return 0;
}

Status ReadMODBlock(std::int16_t blockIndex, MODBuffer& buffer) {
  const MODBlock& block = BlockAt(blockIndex);
  // The block read follows the request at once, without the usual ManufacturerAccess wait.
  Status status = g_oHost->WriteSMBusWord_(g_bZenoMAC, block.iCommand, g_iTargetAddress);
  if (status == 0) {
    std::int16_t length = 0;
    if (g_oHost->ReadSMBusBlock_(block.lDataCommand, buffer, length, g_iTargetAddress) == 0) {
      DecodeMODBlock(blockIndex, buffer);
    } else {
      EmptyShownValues(blockIndex);
    }
    return 0;
  }

  DelaySeconds(kRequestRetryWait);
  status = g_oHost->WriteSMBusWord_(g_bZenoMAC, block.iCommand, g_iTargetAddress);
  if (status != 0) {
    MsgBox("Failed to Write Command " + block.sName);
    return status;
  }
  // The request went through late: the block is read at the next refresh.
  EmptyShownValues(blockIndex);
  return 0;
}

void DecodeMODBlock(std::int16_t blockIndex, const MODBuffer& buffer) {
  for (std::int16_t slot = 0; slot < kMODFieldSlots; ++slot) {
    if (!FieldAt(blockIndex, slot).sName.empty()) DecodeMODField(blockIndex, slot, buffer);
  }
}

void DecodeMODField(std::int16_t blockIndex, std::int16_t fieldIndex, const MODBuffer& buffer) {
  DecodeField(FieldAt(blockIndex, fieldIndex), buffer, true, "Unknown data type");
}

void DecodeMODFieldRaw(std::int16_t blockIndex, std::int16_t fieldIndex, const MODBuffer& buffer) {
  DecodeField(FieldAt(blockIndex, fieldIndex), buffer, false,
              "Unknown data type reading data into local structure.");
}

}  // namespace ombrelay
