#include "looptool/Loop/LoopModel.h"

#include "looptool/Loop/LoopSettings.h"

#include "LoopLibrary/File/Common/CTesselFile.h"
#include "LoopLibrary/File/Legacy/CTSLAppChunk.h"
#include "LoopLibrary/Public/CLOPObject.h"
#include "LoopLibrary/Public/LoopHandles.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Slices/CSliceSequence.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <algorithm>
#include <map>

namespace NSLoopTool {

namespace {

using NSLOPDLL::CSlice;
using NSLOPDLL::CSlicePlayRange;

SMark MarkOf(const CSlice& slice, const NSLOPDLL::CSliceSequence& sequence) {
    SMark mark;
    mark.fFrame = slice.GetPosition();
    mark.fIsActive = sequence.IsActive(slice);
    mark.fIsHidden = slice.GetKind() == NSLOPDLL::kSliceKind_Hidden;
    mark.fIsForced = slice.GetKind() == NSLOPDLL::kSliceKind_Forced;
    mark.fIsMuted = slice.IsMuted();
    mark.fLevel = slice.GetLevel();
    return mark;
}

// The ranges that are slices for a host, in their order: those inside the loop.
std::vector<CSlicePlayRange> RangesOf(const NSLOPDLL::CTesselSequencer& sequencer,
                                      const SLoopModel& model) {
    std::vector<CSlicePlayRange> ranges;
    for (uint32_t i = 0; i < sequencer.GetSliceCount(); ++i) {
        const CSlicePlayRange range = sequencer.GetSlicePlayRange(i);
        if (range.fStart >= model.fLoopStart && range.fEnd <= model.fLoopEnd) {
            ranges.push_back(range);
        }
    }
    return ranges;
}

} // namespace

SLoopModel ReadLoopModel(const CLoop& loop) {
    const NSLOPDLL::CLOPObject& object = *NSLOPDLL::ObjectFromHandle(loop.GetHandle());
    const NSLOPDLL::CTesselSequencer& sequencer = object.GetSequencer();
    const NSLOPDLL::CABCWaveSample& sample = sequencer.GetWaveSample();
    const std::vector<uint8_t>& bytes = loop.GetBytes();
    NSPorter::CMemoryMedia media(static_cast<int64_t>(bytes.size()), bytes.data());

    SLoopModel model;
    model.fKind = KindOfBytes(bytes);
    model.fFrames = sample.GetFrameCount();
    model.fSampleRate = static_cast<int32_t>(sample.GetSampleRate());
    model.fLoopStart = sample.GetLoopStart();
    model.fLoopEnd = sample.GetLoopEnd();
    model.fBars = sequencer.GetBars();
    model.fBeats = sequencer.GetBeats();
    model.fIsTempoStored = model.fKind != kKind_TSL || NSLOPDLL::ReadTSLChunk(media).fTempoStored;

    NSLOPDLL::CSliceSequence sequence(&sample);
    NSLOPDLL::CTesselFile(&media).ReadSlices(sequence);
    std::map<int64_t, SMark> marks;
    for (const CSlice& slice : sequence.GetSlices()) {
        marks[slice.GetPosition()] = MarkOf(slice, sequence);
    }
    std::vector<CSlicePlayRange> ranges = RangesOf(sequencer, model);
    const auto count = static_cast<size_t>(loop.GetInfo().fSliceCount);
    if (ranges.size() != count && count == 1) {
        // The whole loop in one piece.
        ranges = {{static_cast<int32_t>(model.fLoopStart), static_cast<int32_t>(model.fLoopEnd)}};
    }
    for (size_t i = 0; i < std::min(ranges.size(), count); ++i) {
        SMark& mark = marks.try_emplace(ranges[i].fStart, SMark{.fIsStored = false}).first->second;
        mark.fFrame = ranges[i].fStart;
        mark.fSlice = static_cast<int32_t>(i);
        mark.fEndFrame = ranges[i].fEnd;
    }
    for (const auto& [frame, mark] : marks) {
        model.fMarks.push_back(mark);
    }
    return model;
}

} // namespace NSLoopTool
