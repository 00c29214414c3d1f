#pragma once

#include "Fuzz/CByteSource.h"
#include "LoopWriter/IFFChunkTree.h"

// Turns a fuzzer's bytes into edits of a valid file's chunks: bytes overwritten, bodies cut or
// grown, chunks left out, doubled, moved, renamed, sizes misstated. So an input stays near what a
// loader accepts, whatever the fuzzer does to it.
void EditChunks(NSLoopWriter::SIFFChunk& root, CByteSource& source);

// A base file, edited, then used as a host would. The first byte counts the edits.
void CheckEditedFile(NSLoopWriter::SIFFChunk base,
                     std::vector<uint8_t> (*write)(const NSLoopWriter::SIFFChunk&),
                     CByteSource& source);
