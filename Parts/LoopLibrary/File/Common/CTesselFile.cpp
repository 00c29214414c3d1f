#include "LoopLibrary/File/Common/CTesselFile.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2CreatorInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2HeadChunk.h"
#include "LoopLibrary/File/LOP2/LOP2Chunks.h"
#include "LoopLibrary/File/LOP2/LOP2Loader.h"
#include "LoopLibrary/File/Legacy/AppChunk.h"
#include "LoopLibrary/File/Legacy/CLOPAppChunk.h"
#include "LoopLibrary/File/Legacy/CTSLAppChunk.h"
#include "LoopLibrary/File/Legacy/LOPLoader.h"
#include "LoopLibrary/File/Legacy/TSLLoader.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Sample/CAIFFChunks.h"
#include "PorterPackage/Core/IFF/CIFFReader2.h"
#include "PorterPackage/Core/Media/CPartialMedia.h"

namespace NSLOPDLL {

namespace {

// What the operations of CTesselFile do for one kind of file.
struct SKindFunctions {
    int32_t fKind;
    void (*fReadFileInfo)(NSPorter::CMedia&, CTesselFileInfo&, bool& storedFlag);
    std::unique_ptr<CABCWaveSample> (*fReadWaveSample)(NSPorter::CMedia&, const CTesselFileInfo&,
                                                       CLOP2DecompressCallback&);
    void (*fReadSlices)(NSPorter::CMedia&, CSliceSequence&);
    void (*fReadSequencerSettings)(NSPorter::CMedia&, CTesselSequencer&);
    void (*fReadEditSettings)(NSPorter::CMedia&, CTesselEditSettings&);
};

constexpr SKindFunctions kKinds[] = {
    {kFileKind_TSL, ReadTSLFileInfo, ReadTSLWaveSample, ReadTSLSlices, ReadTSLSequencerSettings,
     ReadTSLEditSettings},
    {kFileKind_LOP,
     [](NSPorter::CMedia& media, CTesselFileInfo& info, bool&) { ReadLOPFileInfo(media, info); },
     [](NSPorter::CMedia& media, const CTesselFileInfo&, CLOP2DecompressCallback& callback) {
         return ReadLOPWaveSample(media, callback);
     },
     ReadLOPSlices, ReadLOPSequencerSettings, [](NSPorter::CMedia&, CTesselEditSettings&) {}},
    {kFileKind_LOP2,
     [](NSPorter::CMedia& media, CTesselFileInfo& info, bool&) { ReadLOP2FileInfo(media, info); },
     [](NSPorter::CMedia& media, const CTesselFileInfo&, CLOP2DecompressCallback& callback) {
         return ReadLOP2WaveSample(media, callback);
     },
     ReadLOP2Slices, ReadLOP2SequencerSettings, ReadLOP2EditSettings}};

const SKindFunctions& FunctionsOf(int32_t kind) {
    for (const SKindFunctions& functions : kKinds) {
        if (functions.fKind == kind) {
            return functions;
        }
    }
    RaiseUnsupportedFormat("unknown file type");
}

bool IsLOP2(NSPorter::CMedia& media) {
    constexpr int64_t kRecognisedBytes = 24;
    if (media.GetLength() < kRecognisedBytes) {
        return false;
    }
    media.SetPosition(0);
    const uint32_t groupWord = media.ReadU32();
    media.Skip(4);
    const uint32_t type = media.ReadU32();
    const uint32_t firstID = media.ReadU32();
    media.Skip(4);
    const uint32_t magic = media.ReadU32();
    return groupWord == NSPorter::FourCharID("CAT ") && type == kLOP2FileCatIFFType &&
           firstID == kLOP2HeadChunkID && magic == kLOP2HeadMagic;
}

bool IsAIFF(NSPorter::CMedia& media) {
    if (media.GetLength() < 12) {
        return false;
    }
    media.SetPosition(0);
    const uint32_t groupWord = media.ReadU32();
    media.Skip(4);
    return groupWord == kAIFFGroupID && media.ReadU32() == kAIFFType;
}

// Allocates nothing as long as the file's structure is sound, so that memory which runs out never
// makes a good file an unknown one. The views on the media stand on the stack for that reason.
int32_t FindLegacyKind(NSPorter::CMedia& media) {
    NSPorter::CIFFReader2 file(&media, NSPorter::kIFFMode_BigEndian);
    NSPorter::CIFFChunkHeader form;
    if (!file.FindForm(kAIFFType, form)) {
        return kFileKind_None;
    }
    NSPorter::CPartialMedia formData(&media, form.fOffset + form.GetHeaderSize(),
                                     form.GetDataSize());
    NSPorter::CIFFReader2 chunks(&formData, NSPorter::kIFFMode_BigEndian);
    NSPorter::CIFFChunkHeader app;
    if (!chunks.FindChunk(kAppChunkID, app) || app.GetDataSize() < 8) {
        return kFileKind_None;
    }
    formData.SetPosition(app.fOffset + app.GetHeaderSize());
    const uint32_t signature = formData.ReadU32();
    const uint32_t magic = formData.ReadU32();
    if (signature == CLOPAppChunk::kSignature && magic == CLOPAppChunk::kMagic) {
        return kFileKind_LOP;
    }
    if (signature == CTSLAppChunk::kSignature && magic == CTSLAppChunk::kMagic) {
        return kFileKind_TSL;
    }
    return kFileKind_None;
}

int32_t FindKind(NSPorter::CMedia& media) noexcept {
    try {
        if (IsLOP2(media)) {
            return kFileKind_LOP2;
        }
        return IsAIFF(media) ? FindLegacyKind(media) : kFileKind_None;
    } catch (...) {
        return kFileKind_None;
    }
}

} // namespace

int32_t CTesselFile::DetectFileKind(NSPorter::CMedia& media) noexcept {
    const int64_t position = media.GetPosition();
    const int32_t kind = FindKind(media);
    media.SetPosition(position);
    return kind;
}

bool CTesselFile::IsKnownFile(NSPorter::CMedia& media) noexcept {
    return DetectFileKind(media) != kFileKind_None;
}

CTesselFile::CTesselFile(NSPorter::CMedia* media) : fKind(DetectFileKind(*media)), fMedia(media) {
    if (fKind == kFileKind_None) {
        RaiseUnsupportedFormat("invalid file type");
    }
    FunctionsOf(fKind).fReadFileInfo(*fMedia, fFileInfo, fStoredFlag);
}

CTesselFile::~CTesselFile() = default;

std::unique_ptr<CABCWaveSample>
CTesselFile::ReadWaveSample(CLOP2DecompressCallback& callback) const {
    return FunctionsOf(fKind).fReadWaveSample(*fMedia, fFileInfo, callback);
}

void CTesselFile::ReadSlices(CSliceSequence& sequence) const {
    FunctionsOf(fKind).fReadSlices(*fMedia, sequence);
}

void CTesselFile::ReadSequencerSettings(CTesselSequencer& sequencer) const {
    FunctionsOf(fKind).fReadSequencerSettings(*fMedia, sequencer);
}

void CTesselFile::ReadEditSettings(CTesselEditSettings& settings) const {
    FunctionsOf(fKind).fReadEditSettings(*fMedia, settings);
}

std::unique_ptr<CLOP2CreatorInfoChunk> CTesselFile::ReadCreatorInfo() const {
    return ReadLOP2CreatorInfo(*fMedia);
}

} // namespace NSLOPDLL
