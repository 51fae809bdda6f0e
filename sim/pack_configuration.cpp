#include "sim/pack_configuration.h"

#include "sim/keld_dataflash.h"
#include "sim/quill_subclasses.h"

namespace ombrelay::sim {
namespace {

std::uint8_t ByteAt(const Dataflash& dataflash, std::size_t address) {
  return dataflash.Peek(address, 1)[0];
}

std::uint8_t MorlinConfigurationByte(const Dataflash& dataflash) {
  return ByteAt(dataflash, PackConfiguration::kMorlinSystemConfigurationAddress + 1);
}

}  // namespace

int ConfiguredCellCount(Family family, const Dataflash& dataflash) {
  std::uint8_t byte = 0;
  switch (family) {
    case Family::Keld:
      byte = ByteAt(dataflash, KeldDataflash::kPackConfigurationAddress);
      break;
    case Family::Quill:
      byte = ByteAt(dataflash, QuillSubclasses::kRegisters.address);
      break;
    case Family::Morlin:
      byte = MorlinConfigurationByte(dataflash);
      break;
    case Family::KeldPlus:
      byte = ByteAt(dataflash, PackConfiguration::kKeldPlusSystemConfigurationAddress);
      break;
  }
  return (byte & PackConfiguration::kCellBits) + 1;
}

Measurements::Sensor TemperatureWordSensor(Family family, const Dataflash& dataflash) {
  switch (family) {
    case Family::Morlin:
      return (MorlinConfigurationByte(dataflash) & PackConfiguration::kExternalTemperatureBits) == 0
                 ? Measurements::kInternal
                 : Measurements::kTS1;
    case Family::Keld:
      return Measurements::kTS2;
    case Family::Quill:
    case Family::KeldPlus:
      break;
  }
  return Measurements::kTS1;
}

}  // namespace ombrelay::sim
