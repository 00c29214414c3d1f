#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2GeneralInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2SliceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TesselInfoChunk.h"
#include "LoopLibrary/File/LOP2/LOP2Chunks.h"
#include "LoopLibrary/File/LOP2/LOP2Loader.h"
#include "LoopLibrary/Render/Slices/CSliceSequence.h"
#include "PorterPackage/Core/IFF/IFFSizes.h"

#include <utility>
#include <vector>

namespace NSLOPDLL {

namespace {

CSlice SliceFromChunk(const CLOP2SliceChunk& chunk) {
    CSlice slice;
    slice.SetPosition(chunk.GetPosition());
    slice.SetLevel(chunk.GetLevel());
    slice.SetMuted(chunk.IsMuted());
    if (chunk.IsForced()) {
        slice.SetKind(kSliceKind_Forced);
    } else if (chunk.IsHidden()) {
        slice.SetKind(kSliceKind_Hidden);
    } else {
        slice.SetKind(kSliceKind_Level);
    }
    return slice;
}

// The reader has entered the list, which may hold only slices.
std::vector<CSlice> ReadSliceList(NSPorter::CIFFFileReader& reader, uint32_t sliceCount) {
    if (reader.CountChunks() != int64_t{sliceCount}) {
        RaiseFormatViolation("wrong # of chunks in kLOP2SliceCatIFFType cat");
    }
    std::vector<CSlice> slices;
    // A walk, not a search per slice: a list may hold a hundred thousand.
    bool isEntered = sliceCount > 0 && reader.EnterFirstChild();
    while (isEntered) {
        const NSPorter::CIFFChunkHeader& header = reader.GetHeader();
        if (header.fKind != NSPorter::kIFFKind_Chunk || header.fID != kLOP2SliceChunkID) {
            RaiseFormatViolation("wrong chunks header kind in kLOP2SliceCatIFFType cat");
        }
        slices.push_back(SliceFromChunk(CLOP2SliceChunk(*reader.GetMedia())));
        isEntered = reader.EnterNextSibling();
    }
    return slices;
}

} // namespace

void ReadLOP2Slices(NSPorter::CMedia& media, CSliceSequence& sequence) {
    NSPorter::CIFFFileReader reader(&media, NSPorter::kIFFMode_BigEndian);
    reader.EnterCat(kLOP2FileCatIFFType);
    ReadLOP2Chunk<CLOP2TesselInfoChunk>(reader, kLOP2TesselInfoChunkID);
    const auto general = ReadLOP2Chunk<CLOP2GeneralInfoChunk>(reader, kLOP2GeneralInfoChunkID);
    sequence.SetSensitivity(general.GetSensitivity());
    sequence.SetGateLevel(general.GetGateLevel());

    reader.EnterCat(kLOP2SliceCatIFFType);
    sequence.InsertSlices(ReadSliceList(reader, general.GetSliceCount()));
    sequence.UpdateSliceLengths();
}

} // namespace NSLOPDLL
