#pragma once

#include <cstdint>

namespace NSLOPDLL {

constexpr int32_t kFileKind_None = 0;
constexpr int32_t kFileKind_TSL = 17;  // AIFF with an application chunk, the whole recording
constexpr int32_t kFileKind_LOP = 18;  // AIFF with an application chunk, pieces to be laid out
constexpr int32_t kFileKind_LOP2 = 19; // chunks of its own with compressed audio

} // namespace NSLOPDLL
