#pragma once

#include "LoopLibrary/File/Common/CTesselEditSettings.h"
#include "LoopLibrary/File/Common/CTesselFile.h"
#include "LoopLibrary/File/LOP2/CLOP2DecompressCallback.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2CreatorInfoChunk.h"
#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"
#include "LoopLibrary/Render/Slices/CSliceSequence.h"
#include "LoopWriter/LOP2File.h"
#include "LoopWriter/LOPFile.h"
#include "LoopWriter/SyntheticLoop.h"
#include "LoopWriter/TSLFile.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <gtest/gtest.h>

#include <array>

namespace NSLOPDLL {

using namespace NSLoopWriter;
using Bytes = std::vector<uint8_t>;
using Numbers = std::vector<double>;

// Notes every report of a load and stops it at one of them, counted from 0.
struct CNotingCallback final : CLOP2DecompressCallback {
    bool ShouldStop(uint32_t framesDone) override {
        fReports.push_back(framesDone);
        return fReports.size() - 1 == fStopAt;
    }

    size_t fStopAt = SIZE_MAX;
    std::vector<uint32_t> fReports;
};

// What comes out of a whole load, in the order in which a loop is made of a file.
struct SLoaded {
    // "loaded", or the step that failed and what OutcomeOf says.
    std::string fOutcome;
    CTesselFileInfo fInfo;
    std::vector<uint32_t> fReports;
    std::unique_ptr<CABCWaveSample> fAudio;
    std::unique_ptr<CSliceSequence> fSlices;
    std::unique_ptr<CTesselSequencer> fSequencer;
    CTesselEditSettings fEditSettings;
    std::unique_ptr<CLOP2CreatorInfoChunk> fCreatorInfo;
};

SLoaded Load(const Bytes& bytes, size_t stopAt = SIZE_MAX);

// "loaded", or class, target word and words of what was raised: "XRead ",
// "XFormatViolation[lop_file] invalid loop mode".
std::string OutcomeOf(const std::function<void()>& action);
inline std::string Violation(const std::string& words) {
    return "XFormatViolation[lop_file] " + words;
}

// Loads the file with a stop at each report: any but the last one ends the load.
void CheckReports(const Bytes& bytes, const std::vector<uint32_t>& reports,
                  const std::string& stopped);

// Edits of the first chunk with an id: it is gone, cut off, or has a big-endian field replaced.
ChunkEdit Without(const char* id);
ChunkEdit Cut(const char* id, size_t size);
ChunkEdit Poke(const char* id, int64_t offset, int64_t width, int64_t value);

NSPorter::CMemoryMedia MediaOver(const Bytes& bytes);
uint32_t ID(const char* id);
// Samples of a 24-bit scale, of the left and right plane in turn if there are two.
std::vector<int32_t> Samples(const CABCWaveSample& sample);

// The fields of the records in their order. Audio and loop come first in a file info.
Numbers NumbersOf(const CTesselFileInfo& info);
// Bars, beats, time signature, tempo, synced, drop muted, then the sampler: gain, transpose, shaper
// (on, attack, decay, stretch), compressor (on, threshold, ratio, attack, release).
Numbers NumbersOf(const CTesselSequencer& sequencer);
// Position, level, kind and muted of each slice.
using SliceNumbers = std::vector<std::array<int64_t, 4>>;
SliceNumbers NumbersOf(const CSliceSequence& sequence);

} // namespace NSLOPDLL
