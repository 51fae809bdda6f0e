#include "sim/dataflash_rows.h"

namespace ombrelay::sim {

void DataflashRows::Install(ManufacturerAccess& access, SelectedBlock& shared,
                            Dataflash& dataflash) {
  for (std::size_t row = 0; row < kRowCount; ++row) {
    const std::size_t address = row * kRowLength;
    access.On(static_cast<std::uint16_t>(kFirstRowWord + row), [&shared, &dataflash, address] {
      shared.Select({[&dataflash, address] { return dataflash.Read(address, kRowLength); },
                     [&dataflash, address](std::span<const std::uint8_t> data) {
                       return data.size() == kRowLength && dataflash.Write(address, data);
                     }});
    });
  }
}

}  // namespace ombrelay::sim
