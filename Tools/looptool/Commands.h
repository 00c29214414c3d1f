#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace NSLoopTool {

// What the command line asks of each command. Tempos are beats per minute.

struct SInfoOptions {
    std::string fFile;
    bool fJson = false;
};

struct SRenderOptions {
    std::string fFile;
    std::string fFolder;
    int32_t fRate = 0;   // 0 keeps the loop's own
    int32_t fSlice = -1; // -1 is all
};

struct SPreviewOptions {
    std::string fFile;
    std::string fOutput;
    double fTempo = 0.0; // 0 keeps the loop's own
    double fSeconds = 8.0;
    int32_t fRate = 0;
};

struct SDecodeOptions {
    std::string fFile;
    std::string fOutput;
};

struct SMakeOptions {
    std::string fAudio;
    std::string fOutput;
    std::string fKind = "lop2";
    double fTempo = 0.0; // 0: what follows from length and bars
    int32_t fBars = 0;
    int32_t fBeats = 0;
    std::string fSignature = "4/4";
    std::vector<uint32_t> fSlices;
    int32_t fBits = 0; // 0 keeps those of the audio
    std::vector<std::string> fTexts;
};

/// Each raises CToolFailure when it cannot do what was asked.
void RunInfo(const SInfoOptions& options);
void RunSlices(const SInfoOptions& options);
void RunRender(const SRenderOptions& options);
void RunPreview(const SPreviewOptions& options);
/// Writes the stored audio as it is, bit for bit, with no rendering.
void RunDecode(const SDecodeOptions& options);
void RunMake(const SMakeOptions& options);

} // namespace NSLoopTool
