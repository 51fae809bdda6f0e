#pragma once
// The ManufacturerAccess word through which nearly every request reaches the gauge, and the
// manufacturer data block that carries the answer.

#include <cstdint>
#include <span>

#include "shell/host.h"

namespace ombrelay {

// Writes word to ManufacturerAccess, then waits 3 ms whatever the outcome; the host's status.
Status WriteManufacturerAccess(std::int16_t word, std::int16_t address);

// A block read of g_iManuDataCmd; the caller has already selected what it holds.
Status ReadMODData(std::span<std::uint8_t> buffer, std::int16_t& length, std::int16_t address);

// Calls CheckForError until no bus error is pending.
void DrainBusErrors();

}  // namespace ombrelay
