#pragma once
// What every benchmark run measures besides its own results: the process's CPU time, and the
// host's own waits, which belong to the floor of a run as much as the platform's.

#include <span>

#include "hosts/bus_operation.h"

namespace ombrelay {

// User and system time of this process so far, in milliseconds.
double CpuMs();

// The milliseconds of the host's Delay calls among operations.
double HostDelayMs(std::span<const BusOperation> operations);

}  // namespace ombrelay
