// How media over memory grow.
#pragma once

#include <cstdint>

namespace NSPorter {

/// The end of a run of bytes to be written. Raises std::bad_alloc where no block could hold it, and
/// XStdOutOfRange for a run that begins below zero.
int64_t EndOfRun(int64_t position, int64_t count);

/// The capacity to allocate when `needed` bytes exceed `capacity`: half as much again as is
/// missing, but at least a quarter of the old capacity and at least 100 bytes.
int64_t GrownCapacity(int64_t capacity, int64_t needed);

} // namespace NSPorter
