#include "Fuzz/EditedFile.h"
#include "LoopWriter/DrumFiles.h"

// Edits of a valid .lop file, used through the exports.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    CByteSource source(bytes, size);
    NSLoopWriter::SDrumLoopOptions options;
    options.fSampleRate = 11025; // short audio keeps an input quick
    CheckEditedFile(BuildLOPChunks(MakeDrumLOP(options)), NSLoopWriter::WriteFlatTree, source);
    return 0;
}
