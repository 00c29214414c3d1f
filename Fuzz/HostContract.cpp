#include "Fuzz/HostContract.h"

#include "Fuzz/Promise.h"
#include "LoopLibrary/File/Common/CTesselFile.h"
#include "LoopLibrary/Public/LoopLibrary.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// Longer slices are asked about but not rendered, so that an input stays quick.
constexpr int32_t kLongestSlice = 200000;
constexpr int kMostCalls = 24;
constexpr int32_t kMostBatchFrames = 1024;

class CLibrary {
public:
    CLibrary() { PROMISE(LOPInitializeDLL() == kLOPResult_OK); }
    ~CLibrary() { LOPUninitializeDLL(); }
};

struct SProgress {
    int32_t fLast = -1;
    uint32_t fReports = 0;
    uint32_t fStopAt = 0; // 0: never
    bool fMayWander = false;
};

extern "C" int32_t CheckProgress(int32_t percent, void* user) {
    auto& progress = *static_cast<SProgress*>(user);
    if (!progress.fMayWander) {
        PROMISE(percent >= progress.fLast && percent >= 0 && percent <= 100);
    }
    progress.fLast = percent;
    return ++progress.fReports == progress.fStopAt ? 1 : 0;
}

// A .lop may legally state a loop of hours in a few bytes, and then takes the memory for it,
// whatever else is wrong with the file. That is known and not looked into here.
bool IsGiantLOP(const std::vector<uint8_t>& file) {
    NSPorter::CMemoryMedia media(static_cast<int64_t>(file.size()), file.data());
    try {
        const NSLOPDLL::CTesselFile model(&media);
        NSLOPDLL::CTesselFileInfo info;
        model.GetFileInfo(info);
        return model.GetKind() == NSLOPDLL::kFileKind_LOP && info.fWaveSampleInfo.fFrames > 5000000;
    } catch (const std::exception&) {
        return false; // nor does it load then
    }
}

// Memory does not run out: what would take too much is known beforehand.
bool IsLoadResult(LOPResult result) {
    switch (result) {
    case kLOPResult_OK:
    case kLOPResult_Aborted:
    case kLOPResult_FileCorrupt:
    case kLOPResult_FileTooNew:
    case kLOPResult_ZeroLoopLength:
        return true;
    default:
        return false;
    }
}

// A block of its own, so that the sanitizers see any step beyond it.
using Plane = std::vector<float>;

void CheckSamples(const Plane& samples) {
    for (const float sample : samples) {
        PROMISE(std::isfinite(sample) && sample >= -1.0f && sample <= 1.0f);
    }
}

void CheckSlice(LOPHandle loop, int32_t slice, bool stereo, int32_t spare) {
    LOPSliceInfo info{};
    PROMISE(LOPGetSliceInfo(loop, slice, sizeof info, &info) == kLOPResult_OK);
    PROMISE(info.fFrameCount >= 0 && info.fPPQPosition >= 0);
    float tooShort = 0.0f;
    LOPRenderBuffers small{&tooShort, nullptr};
    if (!stereo && info.fFrameCount > 1) {
        PROMISE(LOPRenderSlice(loop, slice, 1, &small) == kLOPResult_BufferTooSmall);
    }
    if (info.fFrameCount > kLongestSlice) {
        return;
    }
    const int32_t room = std::max(info.fFrameCount + spare, 1);
    Plane left(static_cast<size_t>(room), 77.0f);
    Plane right(left);
    LOPRenderBuffers buffers{left.data(), stereo ? right.data() : nullptr};
    PROMISE(LOPRenderSlice(loop, slice, room, &buffers) == kLOPResult_OK);
    CheckSamples(left);
    PROMISE(std::count(left.begin() + info.fFrameCount, left.end(), 0.0f) >= spare);
    if (stereo) {
        CheckSamples(right);
    }
}

// Two loops of one file, told the same and pulled in different batches, give the same samples.
class CTwinPreview {
public:
    CTwinPreview(LOPHandle one, LOPHandle two) : fOne(one), fTwo(two) {}

    template <class Call>
    void Both(Call call) {
        const LOPResult result = call(fOne);
        PROMISE(call(fTwo) == result);
    }

    void Pull(int32_t frames, int32_t batch) {
        Plane left(static_cast<size_t>(frames), 77.0f);
        Plane right(left);
        Plane twinLeft(left);
        Plane twinRight(left);
        LOPRenderBuffers whole{left.data(), right.data()};
        PROMISE(LOPRenderPreviewBatch(fOne, frames, &whole) == kLOPResult_OK);
        for (int32_t done = 0; done < frames; done += batch) {
            LOPRenderBuffers part{twinLeft.data() + done, twinRight.data() + done};
            PROMISE(LOPRenderPreviewBatch(fTwo, std::min(batch, frames - done), &part) ==
                    kLOPResult_OK);
        }
        CheckSamples(left);
        CheckSamples(right);
        PROMISE(left == twinLeft && right == twinRight);
    }

private:
    const LOPHandle fOne;
    const LOPHandle fTwo;
};

void UseLoop(LOPHandle loop, LOPHandle twin, CByteSource& decisions) {
    LOPInfo info{};
    PROMISE(LOPGetInfo(loop, sizeof info, &info) == kLOPResult_OK);
    PROMISE(info.fChannels == 1 || info.fChannels == 2);
    PROMISE(info.fSliceCount >= 0 && info.fStoredTempo >= LOP_MIN_TEMPO);
    LOPCreatorInfo creator{};
    const LOPResult texts = LOPGetCreatorInfo(loop, sizeof creator, &creator);
    PROMISE(texts == kLOPResult_OK || texts == kLOPResult_NoCreatorInfo ||
            texts == kLOPResult_FileCorrupt);
    CTwinPreview preview(loop, twin);
    for (int call = 0; call < kMostCalls && !decisions.IsEmpty(); ++call) {
        switch (decisions.Byte() % 8) {
        case 0:
            preview.Both([](LOPHandle handle) { return LOPStartPreview(handle); });
            break;
        case 1:
            preview.Both([](LOPHandle handle) { return LOPStopPreview(handle); });
            break;
        case 2:
            preview.Both([tempo = decisions.Signed() & 0x7FFFF](LOPHandle handle) {
                return LOPSetPreviewTempo(handle, tempo);
            });
            break;
        case 3:
            preview.Both([rate = decisions.Signed() & 0xFFFFF](LOPHandle handle) {
                return LOPSetOutputSampleRate(handle, rate);
            });
            break;
        case 4:
            if (info.fSliceCount > 0) {
                const auto count = static_cast<uint32_t>(info.fSliceCount);
                CheckSlice(loop, static_cast<int32_t>(decisions.Below(count)), info.fChannels == 2,
                           decisions.Byte());
            }
            break;
        default: {
            const auto frames = static_cast<int32_t>(decisions.Below(kMostBatchFrames)) + 1;
            preview.Pull(frames, static_cast<int32_t>(decisions.Below(200)) + 1);
            break;
        }
        }
    }
    preview.Both([](LOPHandle handle) { return LOPStopPreview(handle); });
}

} // namespace

void CheckHostContract(const std::vector<uint8_t>& file, CByteSource& decisions) {
    const CLibrary library;
    // What the library gets is compared with what it was given.
    const std::vector<uint8_t> given = file; // NOLINT(performance-unnecessary-copy-initialization)
    const auto size = static_cast<int32_t>(given.size());
    SProgress progress;
    progress.fStopAt = decisions.Byte() % 8 == 0 ? decisions.Byte() : 0u;
    // A .lop may place its pieces backward and beyond its own total, and its reports follow.
    progress.fMayWander = given.size() > 3 && std::memcmp(given.data(), "FORM", 4) == 0;

    LOPInfo stated{};
    const LOPResult informed = LOPGetInfoFromBuffer(size, given.data(), sizeof stated, &stated);
    PROMISE(size < 1 ? informed == kLOPResult_InvalidArgument : IsLoadResult(informed));
    if (IsGiantLOP(given)) {
        return;
    }
    LOPHandle loop = 1;
    const LOPResult loaded = LOPCreate(&loop, given.data(), size, CheckProgress, &progress);
    PROMISE(size < 1 ? loaded == kLOPResult_InvalidArgument : IsLoadResult(loaded));
    PROMISE(given == file);
    if (loaded != kLOPResult_OK) {
        PROMISE(size < 1 || loop == 0);
        return;
    }
    PROMISE(progress.fMayWander || progress.fLast == 100);
    // A time signature of nothing over nothing loads clamped, but has no length in the file.
    PROMISE(informed == kLOPResult_OK || informed == kLOPResult_ZeroLoopLength ||
            informed == kLOPResult_FileCorrupt);
    LOPHandle twin = 0;
    PROMISE(LOPCreate(&twin, given.data(), size, nullptr, nullptr) == kLOPResult_OK);
    UseLoop(loop, twin, decisions);
    LOPDelete(&twin);
    LOPDelete(&loop);
    PROMISE(twin == 0 && loop == 0);
}
