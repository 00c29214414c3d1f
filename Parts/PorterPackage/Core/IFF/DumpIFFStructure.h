// A listing of an IFF file's chunks for the eyes of a developer.
#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>

namespace NSPorter {

/// Writes a line for each chunk to `output`, ending in LF, with the chunks of a group below it and
/// four blanks further in. `indent` counts the blanks of the outermost lines. Groups deeper than 64
/// levels are listed and not entered, and no line starts further in than 200 blanks. A malformed
/// chunk raises XFormatViolation behind the lines before it.
void DumpIFFStructure(CMedia& media, CMedia& output, int32_t indent);

} // namespace NSPorter
