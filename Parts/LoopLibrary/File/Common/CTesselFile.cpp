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

[[noreturn]] void RaiseUnknownFileType() {
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
    switch (fKind) {
    case kFileKind_None:
        RaiseUnsupportedFormat("invalid file type");
    case kFileKind_TSL:
        ReadTSLFileInfo(*fMedia, fFileInfo, fStoredFlag);
        break;
    case kFileKind_LOP:
        ReadLOPFileInfo(*fMedia, fFileInfo);
        break;
    case kFileKind_LOP2:
        ReadLOP2FileInfo(*fMedia, fFileInfo);
        break;
    default:
        RaiseUnknownFileType();
    }
}

CTesselFile::~CTesselFile() = default;

std::unique_ptr<CABCWaveSample>
CTesselFile::ReadWaveSample(CLOP2DecompressCallback& callback) const {
    switch (fKind) {
    case kFileKind_TSL:
        return ReadTSLWaveSample(*fMedia, fFileInfo, callback);
    case kFileKind_LOP:
        return ReadLOPWaveSample(*fMedia, callback);
    case kFileKind_LOP2:
        return ReadLOP2WaveSample(*fMedia, callback);
    default:
        RaiseUnknownFileType();
    }
}

void CTesselFile::ReadSlices(CSliceSequence& sequence) const {
    switch (fKind) {
    case kFileKind_TSL:
        ReadTSLSlices(*fMedia, sequence);
        break;
    case kFileKind_LOP:
        ReadLOPSlices(*fMedia, sequence);
        break;
    case kFileKind_LOP2:
        ReadLOP2Slices(*fMedia, sequence);
        break;
    default:
        RaiseUnknownFileType();
    }
}

void CTesselFile::ReadSequencerSettings(CTesselSequencer& sequencer) const {
    switch (fKind) {
    case kFileKind_TSL:
        ReadTSLSequencerSettings(*fMedia, sequencer);
        break;
    case kFileKind_LOP:
        ReadLOPSequencerSettings(*fMedia, sequencer);
        break;
    case kFileKind_LOP2:
        ReadLOP2SequencerSettings(*fMedia, sequencer);
        break;
    default:
        RaiseUnknownFileType();
    }
}

void CTesselFile::ReadEditSettings(CTesselEditSettings& settings) const {
    switch (fKind) {
    case kFileKind_TSL:
        ReadTSLEditSettings(*fMedia, settings);
        break;
    case kFileKind_LOP:
        break;
    case kFileKind_LOP2:
        ReadLOP2EditSettings(*fMedia, settings);
        break;
    default:
        RaiseUnknownFileType();
    }
}

std::unique_ptr<CLOP2CreatorInfoChunk> CTesselFile::ReadCreatorInfo() const {
    return ReadLOP2CreatorInfo(*fMedia);
}

} // namespace NSLOPDLL
