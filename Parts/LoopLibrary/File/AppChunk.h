#pragma once

#include <cstdint>
#include <span>

namespace NSPorter {
class CIFFReader;
}

namespace NSLOPDLL {

// Reads the first "APPL" chunk of an AIFF file: its signature, and what follows into `destination`,
// cut to its size; what the chunk does not fill is left alone. False when there is no such chunk.
// XFormatViolation without words when the chunk is shorter than a signature or overruns the file.
bool ReadAppChunk(NSPorter::CIFFReader& reader, uint32_t& signature,
                  std::span<uint8_t> destination);

} // namespace NSLOPDLL
