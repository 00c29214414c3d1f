#include "Fuzz/EditedFile.h"
#include "LoopWriter/DrumFiles.h"

// Edits of a valid .lop file, used through the exports.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    CByteSource source(bytes, size);
    NSLoopWriter::SDrumLoopOptions options;
    // Short audio keeps an input quick.
    options.fSampleRate = 11025;
    options.fBeats = 1;
    CheckEditedFile(BuildLOPChunks(MakeDrumLOP(options)), NSLoopWriter::WriteFlatTree, source);
    return 0;
}
