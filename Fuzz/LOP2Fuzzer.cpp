#include "Fuzz/EditedFile.h"
#include "LoopWriter/DrumFiles.h"

// Edits of a valid LOP2 file, used through the exports.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    CByteSource source(bytes, size);
    NSLoopWriter::SDrumLoopOptions options;
    // Short audio keeps an input quick.
    options.fSampleRate = 11025;
    options.fBeats = 1;
    const uint8_t form = source.Byte();
    options.fStereo = (form & 1) != 0;
    options.fBitDepth = (form & 2) != 0 ? 24 : 16;
    CheckEditedFile(BuildLOP2Chunks(MakeDrumLOP2(options)), NSLoopWriter::WriteNestedTree, source);
    return 0;
}
