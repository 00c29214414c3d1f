#pragma once

#include "FileLib/Interface/IByteStreams.h"

#include <cstdint>

namespace NSFileLib {

/// Big-endian numbers at a position that moves on behind them. A reader or writer that fails raises
/// what its status names, and the position stays.
uint32_t ReadU32(IByteReader& reader, int64_t& position);
uint8_t ReadU8(IByteReader& reader, int64_t& position);
void WriteU32(IByteWriter& writer, int64_t& position, uint32_t value);
void WriteU8(IByteWriter& writer, int64_t& position, uint8_t value);

} // namespace NSFileLib
