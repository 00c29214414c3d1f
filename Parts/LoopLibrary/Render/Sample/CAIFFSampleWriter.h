// Writes the chunks from which the AIFF sample reader gets the same information back.
#pragma once

#include "LoopLibrary/Render/Sample/CWaveSampleInfo.h"
#include "PorterPackage/Core/IFF/CIFFWriter.h"

#include <cstdint>

namespace NSLOPDLL {

enum class EAIFFCommonForm { kPlain, kWithCompressionType };

/// "COMM": 18 bytes, or 22 with the compression type that says there is none.
void WriteAIFFCommon(NSPorter::CIFFWriter& writer, const CWaveSampleInfo& info,
                     EAIFFCommonForm form);

/// "INST", and "MARK" behind it where the mode knows loop points: "Loop Start" with id 1 and "Loop
/// End" with id 2. A root note or note range that the record does not have is written as 60 and as
/// 0 to 127.
void WriteAIFFLoop(NSPorter::CIFFWriter& writer, const CWaveLoopInfo& loopInfo);

/// Begins "SSND" and writes its head and `offset` zero bytes. The caller writes the samples and
/// ends the chunk.
void BeginAIFFSoundData(NSPorter::CIFFWriter& writer, uint32_t offset, uint32_t blockSize);

} // namespace NSLOPDLL
