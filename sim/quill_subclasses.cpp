#include "sim/quill_subclasses.h"

namespace ombrelay::sim {

QuillSubclasses::QuillSubclasses(CommandSet& commands, Dataflash& dataflash)
    : dataflash_(dataflash), data_(commands, kDataCommand) {
  commands.OnWriteWord(kSelectCommand, [this](std::uint16_t number) {
    Select(number);
    return true;
  });
}

std::optional<QuillSubclasses::Subclass> QuillSubclasses::Find(std::uint16_t number) {
  for (const Subclass& subclass : {kCalibration, kRegisters}) {
    if (subclass.number == number) return subclass;
  }
  return std::nullopt;
}

void QuillSubclasses::Select(std::uint16_t number) {
  const auto subclass = Find(number);
  if (!subclass) {
    data_.Select({});
    return;
  }
  data_.Select({[this, at = *subclass] { return dataflash_.Read(at.address, at.length); },
                [this, at = *subclass](std::span<const std::uint8_t> data) {
                  return data.size() == at.length && dataflash_.Write(at.address, data);
                }});
}

}  // namespace ombrelay::sim
