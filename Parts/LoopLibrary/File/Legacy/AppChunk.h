#pragma once

#include "PorterPackage/Core/Bytes/FourCharID.h"

#include <cstdint>
#include <span>

namespace NSPorter {
class CIFFReader;
class CIFFWriter;
} // namespace NSPorter

namespace NSLOPDLL {

constexpr uint32_t kAppChunkID = NSPorter::FourCharID("APPL");

/// Reads the first "APPL" chunk of an AIFF file: its signature, and what follows into
/// `destination`, cut to its size; what the chunk does not fill is left alone. False when there is
/// no such chunk. XFormatViolation without words when the chunk is shorter than a signature or
/// overruns the file.
bool ReadAppChunk(NSPorter::CIFFReader& reader, uint32_t& signature,
                  std::span<uint8_t> destination);

/// Writes such a chunk whole into the group that the writer has open. Raises what the media raises.
void WriteAppChunk(NSPorter::CIFFWriter& writer, uint32_t signature,
                   std::span<const uint8_t> bytes);

} // namespace NSLOPDLL
