#pragma once
// Patching a calibration parameter's bytes into the local calibration data, where the record of
// g_atCalParameters puts them: dataflash order, most significant byte first.

#include <cstdint>
#include <span>

#include "shell/mod_block.h"

namespace ombrelay {

// The parameter at field of record in g_atCalParameters.
const MODField& CalField(std::int16_t record, std::int16_t field);

// The field's bytes at CalDataBase + its offset. A place outside g_abCalData throws
// RuntimeError("Subscript out of range") before anything is patched.
void PatchCalByte(const MODField& field, std::uint8_t value);
void PatchCalWord(const MODField& field, std::uint8_t high, std::uint8_t low);
// bytes in their order from the field's place on.
void PatchCalBytes(const MODField& field, std::span<const std::uint8_t> bytes);

}  // namespace ombrelay
