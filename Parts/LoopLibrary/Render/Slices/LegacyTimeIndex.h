#pragma once

#include <cstdint>

namespace NSLOPDLL {

/// Turns a time of the oldest loop files, 0 to 127, into the nearest index of the envelope tables.
/// A decay of 127 means none: 1023. `rate` is an output rate, 11025 to 1000000; its tables are held
/// for the time of the call. Raises std::bad_alloc.
int32_t LegacyTimeIndex(int32_t value, bool isDecay, int32_t rate);

} // namespace NSLOPDLL
